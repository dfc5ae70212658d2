#include "bench/Report.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>

namespace zyn::bench {

namespace {

constexpr int kFigureWidth = 52;
constexpr int kLimitWidth = 48;

}  // namespace

Report::Report() {
  std::printf("%-*s %-*s %10s %10s %5s %8s %8s  %s\n", kFigureWidth, "figure", kLimitWidth, "limit",
              "measured", "limit", "", "ratio", "required", "reached");
}

void Report::add(const Row& row) {
  const double ratio = row.value / row.bound;
  const bool isReached = ratio <= row.required;
  ++rows_;
  reached_ += isReached ? 1 : 0;
  std::printf("%-*s %-*s %10.3f %10.3f %5s %8.3f %8.2f  %s", kFigureWidth, row.figure.c_str(),
              kLimitWidth, row.limit.c_str(), row.value, row.bound, row.unit, ratio, row.required,
              isReached ? "yes" : "NO");
  std::printf(" (n=%d)\n", row.samples);
  std::fflush(stdout);
}

void Report::add(const std::string& figure, const std::string& limit, const Samples& value,
                 const Samples& bound, double required) {
  add({.figure = figure,
       .limit = limit,
       .value = value.median(),
       .bound = bound.median(),
       .required = required,
       .samples = std::min(value.count(), bound.count())});
}

void Report::note(const std::string& text) {
  std::printf("    %s\n", text.c_str());
  std::fflush(stdout);
}

void Report::finish() { std::printf("%d of %d reached\n", reached_, rows_); }

std::string textOf(const char* format, ...) {
  std::array<char, 256> text{};
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  return text.data();
}

}  // namespace zyn::bench
