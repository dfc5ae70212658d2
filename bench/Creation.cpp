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

}  // namespace

void measureCreation(Report& report, const Sizes& sizes) {
  ViewCreation<test::View3DHost> view3D;
  ViewCreation<test::View2DHost> view2D;
  std::optional<RawWindow> window;
  const Job raw{[&] { window.emplace(kViewSize); }, [&] { window.reset(); }};
  const auto times = interleave({view3D.job(), view2D.job(), raw}, sizes.rounds);
  report.add("3D view from creation to first paint", "window, context and font lists", times[0],
             times[2], 1.2);
  report.add("2D view from creation to first paint", "window, context and font lists", times[1],
             times[2], 1.2);
}

}  // namespace zyn::bench
