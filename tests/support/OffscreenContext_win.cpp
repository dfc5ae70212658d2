#include "support/OffscreenContext_win.h"

#include "support/Scene_win.h"

namespace zyn::test {

void OffscreenContext::add(IDispatch* object, int mode) { require(Add(object, mode), "Add"); }

void OffscreenContext::resize(int width, int height) {
  long made = 0;
  require(create(width, height, &made), "create");
  if (made != 1) throw std::runtime_error("the creation of a surface did not answer 1");
}

Bytes OffscreenContext::renderBytes() {
  const auto path = folder_.file(L"render.bmp");
  std::filesystem::remove(path);
  require(CreateBitmap(bstr(path)), "CreateBitmap");
  return readFile(path);
}

Image OffscreenContext::render() { return decodeBmp(renderBytes()); }

OffscreenGraph::OffscreenGraph(int width, int height) : OffscreenGraph() {
  require(put_BackColor(colourArray(kBackground)), "BackColor");
  resize(width, height);
}

void OffscreenGraph::show(double xMin, double xMax, double yMin, double yMax) {
  auto rectangle = createObject<IZYNRectangle>(kRectangleProgId);
  require(rectangle->setBornes(xMin, xMax, yMin, yMax), "setBornes");
  require(get()->ViewRect(rectangle.Get(), 0), "ViewRect");
}

const std::vector<OffscreenClass>& offscreenClasses() {
  static const std::vector<OffscreenClass> classes = {
      {"Scene",
       [](int width, int height) { return std::make_unique<OffscreenScene>(width, height); },
       [] { return std::make_unique<OffscreenScene>(); }},
      {"Graph",
       [](int width, int height) { return std::make_unique<OffscreenGraph>(width, height); },
       [] { return std::make_unique<OffscreenGraph>(); }}};
  return classes;
}

}  // namespace zyn::test
