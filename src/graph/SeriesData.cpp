#include "graph/SeriesData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace zyn {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double onAxis(double value, bool isLog) {
  if (!isLog) {
    return value;
  }
  return value > 0 ? std::log10(value) : kNaN;
}

/// Where an error bar's end can be shown; else none of that part of it.
double endOnAxis(double end, double place, bool isLog) {
  const double shown = onAxis(end, isLog);
  return std::isfinite(shown) ? shown : place;
}

double lengthOf(double error) { return std::isfinite(error) ? error : 0; }

}  // namespace

void SeriesData::setPoints(std::vector<double> x, std::vector<double> y) {
  points_ = PointSequence(std::move(x), std::move(y));
  errorsX_.reset();
  errorsY_.reset();
  statistics_ = {};
  onAxes_ = {};
  dropBeyondCapacity();
  changed();
}

void SeriesData::append(std::span<const double> x, std::span<const double> y) {
  for (std::optional<Errors>* errors : {&errorsX_, &errorsY_}) {
    if (*errors) {
      (*errors)->reserve(x.size());
    }
  }
  points_.append(x, y);
  for (std::optional<Errors>* errors : {&errorsX_, &errorsY_}) {
    for (std::size_t i = 0; *errors && i < x.size(); ++i) {
      (*errors)->push_back({});
    }
  }
  dropBeyondCapacity();
  changed();
}

void SeriesData::setCapacity(std::size_t capacity) {
  capacity_ = capacity;
  dropBeyondCapacity();
  changed();
}

void SeriesData::dropBeyondCapacity() {
  if (capacity_ == 0 || points_.size() <= capacity_) {
    return;
  }
  const std::size_t first = points_.end() - capacity_;
  points_.dropBefore(first);
  for (std::optional<Errors>* errors : {&errorsX_, &errorsY_}) {
    if (*errors) {
      (*errors)->dropBefore(first);
    }
  }
}

void SeriesData::setErrorsX(std::span<const double> minus, std::span<const double> plus) {
  setErrors(errorsX_, errorsOf(minus, plus));
}

void SeriesData::setErrorsY(std::span<const double> minus, std::span<const double> plus) {
  setErrors(errorsY_, errorsOf(minus, plus));
}

SeriesData::Errors SeriesData::errorsOf(std::span<const double> minus,
                                        std::span<const double> plus) const {
  Errors errors(points_.first());
  errors.reserve(minus.size());
  for (std::size_t i = 0; i < minus.size(); ++i) {
    errors.push_back({lengthOf(minus[i]), lengthOf(plus[i])});
  }
  return errors;
}

void SeriesData::setErrors(std::optional<Errors>& errors, std::optional<Errors> values) {
  errors = std::move(values);
  for (auto& row : onAxes_) {
    for (std::optional<OnAxes>& known : row) {
      if (known) {
        known->bars = {};
      }
    }
  }
  changed();
}

SeriesData::Plotted SeriesData::plotted(const AxisLogs& logs) {
  const OnAxes& known = upToDate(logs);
  return {shown(known, logs), known.boxes};
}

SeriesData::OnAxes& SeriesData::upToDate(const AxisLogs& logs) {
  std::optional<OnAxes>& slot = onAxes_[logs.x ? 1 : 0][logs.y ? 1 : 0];
  OnAxes& known = slot ? *slot : slot.emplace();
  if (logs.x || logs.y) {
    appendLogarithms(known.logarithms, logs);
  }
  known.boxes.follow(shown(known, logs));
  return known;
}

void SeriesData::appendLogarithms(PointSequence& logarithms, const AxisLogs& logs) const {
  if (logarithms.end() < points_.first()) {
    logarithms = PointSequence(points_.first());
  }
  constexpr std::size_t kAtOnce = 1024;
  std::array<double, kAtOnce> x{};
  std::array<double, kAtOnce> y{};
  while (logarithms.end() < points_.end()) {
    const std::size_t from = std::max(logarithms.end(), points_.first());
    const std::size_t count = std::min(kAtOnce, points_.end() - from);
    for (std::size_t i = 0; i < count; ++i) {
      x[i] = onAxis(points_.x(from + i), logs.x);
      y[i] = onAxis(points_.y(from + i), logs.y);
    }
    logarithms.append(std::span(x).first(count), std::span(y).first(count));
  }
  logarithms.dropBefore(points_.first());
}

std::optional<Box3> SeriesData::extent(const AxisLogs& logs) {
  OnAxes& known = upToDate(logs);
  const RunBox all = known.boxes.all();
  if (all.isEmpty()) {
    return std::nullopt;
  }
  Bars bars{all.box};
  if (hasErrors()) {
    bars.merge(
        known.bars.total(points_.first(), points_.end(), [&](std::size_t from, std::size_t to) {
          return barsOf(shown(known, logs), logs, from, to);
        }));
  }
  return bars.box;
}

SeriesData::Bars SeriesData::barsOf(const PointSequence& shown, const AxisLogs& logs,
                                    std::size_t from, std::size_t to) const {
  Bars bars;
  for (std::size_t i = from; i < to; ++i) {
    if (!shown.isGap(i)) {
      const ErrorRange ofX = errorX(i);
      const ErrorRange ofY = errorY(i);
      bars.merge({Box3{endOnAxis(points_.x(i) - ofX.minus, shown.x(i), logs.x),
                       endOnAxis(points_.x(i) + ofX.plus, shown.x(i), logs.x),
                       endOnAxis(points_.y(i) - ofY.minus, shown.y(i), logs.y),
                       endOnAxis(points_.y(i) + ofY.plus, shown.y(i), logs.y), 0, 0}});
    }
  }
  return bars;
}

void SeriesData::Bars::merge(const Bars& next) {
  if (box && next.box) {
    box->unite(*next.box);
  } else if (next.box) {
    box = next.box;
  }
}

double SeriesData::smallestGap(const AxisLogs& logs) {
  OnAxes& known = upToDate(logs);
  return known.gaps.of(shown(known, logs));
}

}  // namespace zyn
