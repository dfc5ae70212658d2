#include <functional>
#include <list>
#include <optional>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "bench/RawWindow.h"
#include "support/View2DHost_win.h"

namespace zyn::bench {

namespace {

/// Creates a view in a container and has it painted.
template <class Host>
class ViewCreation {
 public:
  Job job() {
    return {[this] { view_.emplace(kViewSize).paint(); }, [this] { view_.reset(); }};
  }

 private:
  std::optional<Host> view_;
};

/// Bytes of the process for each of so many that live at the same time.
double bytesOfEach(int count, const std::function<void()>& create) {
  create();
  const double before = residentBytes();
  for (int i = 0; i < count; ++i) {
    create();
  }
  return (residentBytes() - before) / count;
}

/// All live to the end, so that none takes over what another one has left.
void measureMemory(Report& report, const Sizes& sizes) {
  constexpr SIZE kSmall = {320, 240};
  constexpr double kMostMore = 4e6;
  std::list<RawWindow> windows;
  std::list<test::View3DHost> views3D;
  std::list<test::View2DHost> views2D;
  const double raw =
      bytesOfEach(sizes.views, [&] { windows.emplace_back(kSmall, RawWindow::kWithoutFonts); });
  const auto addRow = [&](const char* kind, double bytes) {
    report.add({.figure = textOf("memory of each of %d %s views beyond that", sizes.views, kind),
                .limit = textOf("4 MB; window and context: %.2f MB", raw / 1e6),
                .value = (bytes - raw) / 1e6,
                .bound = kMostMore / 1e6,
                .unit = "MB"});
  };
  addRow("3D", bytesOfEach(sizes.views, [&] { views3D.emplace_back(kSmall).paint(); }));
  addRow("2D", bytesOfEach(sizes.views, [&] { views2D.emplace_back(kSmall).paint(); }));
}

}  // namespace

void measureCreation(Report& report, const Sizes& sizes) {
  ViewCreation<test::View3DHost> view3D;
  ViewCreation<test::View2DHost> view2D;
  std::optional<RawWindow> window;
  const Job raw{[&] { window.emplace(kViewSize); }, [&] { window.reset(); }};
  const auto times = interleave({view3D.job(), view2D.job(), raw}, sizes.rounds);
  report.add("3D view from creation to first paint", "window, context and font lists", times[0],
             times[2], 1.1);
  report.add("2D view from creation to first paint", "window, context and font lists", times[1],
             times[2], 1.1);
  measureMemory(report, sizes);
}

}  // namespace zyn::bench
