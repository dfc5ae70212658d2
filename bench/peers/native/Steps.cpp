#include "Steps.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Place = std::pair<int, int>;

double timed(const std::function<void()>& step) {
  const auto start = Clock::now();
  step();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// As often as that, but for no more than some seconds.
double median(int count, const std::function<void()>& step) {
  constexpr double kPatience = 4000;
  std::vector<double> times;
  double sum = 0;
  while (count-- > 0 && sum <= kPatience) {
    times.push_back(timed(step));
    sum += times.back();
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

double residentMegabytes() {
  std::ifstream file("/proc/self/statm");
  double pages = 0;
  file >> pages >> pages;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

std::vector<Place> placesToPick() {
  std::vector<Place> places;
  for (const int x : {400, 330, 470, 250, 550}) {
    for (const int y : {360, 300, 420, 240}) {
      places.emplace_back(x, y);
    }
  }
  return places;
}

void print(double value) {
  const int decimals = value >= 100 ? 0 : value >= 1 ? 1 : value >= 0.02 ? 2 : 4;
  std::printf(" %.*f |", decimals, value);
}

void measurePicks(Scene& scene) {
  const std::vector<Place> places = placesToPick();
  const double first = timed([&] {
    std::any_of(places.begin(), places.end(),
                [&](const Place& place) { return scene.pick(place.first, place.second); });
  });
  std::vector<Place> hits;
  for (const auto& [x, y] : places) {
    if (hits.size() < 5 && scene.pick(x, y)) {
      hits.emplace_back(x, y);
    }
  }
  if (hits.empty()) {
    std::printf(" - | - |");
    return;
  }
  print(first);
  print(median(9, [&] {
    std::rotate(hits.begin(), hits.begin() + 1, hits.end());
    scene.pick(hits.back().first, hits.back().second);
  }));
}

}  // namespace

int measure(int count, char** arguments, const std::map<std::string, MakeScene>& scenes) {
  if (count == 2 && arguments[1] == std::string("scenes")) {
    for (const auto& [name, make] : scenes) {
      std::printf("%s\n", name.c_str());
    }
    return 0;
  }
  const auto found = count == 3 ? scenes.find(arguments[1]) : scenes.end();
  if (found == scenes.end()) {
    std::fprintf(stderr, "usage: %s scenes | SCENE FOLDER\n", arguments[0]);
    return 2;
  }
  const std::string program = arguments[0];
  const std::string product = program.substr(program.rfind('/') + 1);
  const std::unique_ptr<Scene> scene = found->second();
  const double before = residentMegabytes();
  std::printf("| %s |", product.c_str());
  print(timed([&] { scene->build(); }));
  print(timed([&] {
    scene->look();
    scene->draw();
  }));
  print(median(7, [&] {
    scene->turn();
    scene->draw();
  }));
  measurePicks(*scene);
  print(median(3, [&] {
    scene->change();
    scene->draw();
  }));
  const double after = residentMegabytes();
  print(median(3, [&] {
    scene->save(std::string(arguments[2]) + "/" + found->first + "-" + product + ".png");
  }));
  print(after - before);
  std::printf("\n");
  return 0;
}
