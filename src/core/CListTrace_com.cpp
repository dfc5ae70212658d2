#include "core/CListTrace_com.h"

#include <memory>

#include "ZYNVUE.h"
#include "com/errors_com.h"
#include "core/queryOptional_com.h"
#include "glcontext/gl_api.h"
#include "objects/ITextView_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

void readAttributeNumber(IDispatch* object, std::int32_t& number) {
  const auto attributable = queryOptional<IZYNAttribuable>(object);
  if (!attributable) {
    return;
  }
  ComPtr<IDispatch> attribute;
  const HRESULT answer = attributable->get_Attribut(&attribute);
  if (answer == E_NOINTERFACE || (SUCCEEDED(answer) && !attribute)) {
    return;
  }
  throwIfFailed(answer, attributable.Get(), __uuidof(IZYNAttribuable));
  if (const auto numbered = queryOptional<IZYNAttribut>(attribute.Get())) {
    LONG value = number;
    throwIfFailed(numbered->get_Numero(&value), numbered.Get(), __uuidof(IZYNAttribut));
    number = value;
  }
}

void readTrianglePriority(IDispatch* object, std::int32_t& number) {
  if (const auto triangle = queryOptional<IZYNGLTriangle>(object)) {
    LONG value = number;
    throwIfFailed(triangle->get_Priority(&value), triangle.Get(), __uuidof(IZYNGLTriangle));
    number = value;
  }
}

}  // namespace

CListTrace::~CListTrace() { removeAll(); }

void CListTrace::add(IDispatch* object, std::uint32_t mode) { append(makeElement(object, mode)); }

std::unique_ptr<DrawElem> CListTrace::makeElement(IDispatch* object, std::uint32_t mode) {
  if (!object) {
    return nullptr;
  }
  auto element = std::make_unique<DrawElem>();
  element->object = object;
  element->drawingMode = mode;
  readAttributeNumber(object, element->pickName);
  readTrianglePriority(object, element->pickName);
  return element;
}

void CListTrace::append(std::unique_ptr<DrawElem> element) {
  if (element) {
    append(element.get());
    static_cast<void>(element.release());
  }
}

bool CListTrace::remove(IDispatch* object) {
  for (const Node* node = head(); node; node = node->next) {
    if (node->value->object.Get() == object) {
      const std::unique_ptr<DrawElem> element(node->value);
      ZYNList::remove(element.get(), true);
      return true;
    }
  }
  return false;
}

void CListTrace::removeEvery(IDispatch* object) {
  // Releasing an object may run foreign code that adds it again: no more than there are.
  for (std::size_t left = count(); left > 0 && remove(object); --left) {
  }
}

void CListTrace::removeAll() {
  // Releasing an object may run foreign code that changes the list: one element at a time.
  while (const std::unique_ptr<DrawElem> element{takeFirst()}) {
  }
}

bool CListTrace::mayDrawText(IDispatch* object) {
  ComPtr<IZYNGLTriangle> triangle;
  ComPtr<IZYNPolyligne> polyline;
  return (FAILED(object->QueryInterface(IID_PPV_ARGS(&triangle))) || !triangle) &&
         (FAILED(object->QueryInterface(IID_PPV_ARGS(&polyline))) || !polyline);
}

bool CListTrace::mayHoldText() {
  for (Walk walk(*this); walk; walk.advance()) {
    const ComPtr<IDispatch> object = (*walk)->object;
    if (mayDrawText(object.Get())) {
      return true;
    }
  }
  return false;
}

void CListTrace::draw3D(std::uint32_t overrideMode, const TextView& view) {
  draw([](IGLDraw& object, int mode) { return object.Draw3D(mode); }, overrideMode, view);
}

void CListTrace::draw2D(std::uint32_t overrideMode, const TextView& view) {
  const auto drawOnTop = [](IGLDraw& object, int mode) {
    glDisable(GL_DEPTH_TEST);  // which texts leave on
    return object.Draw2D(mode);
  };
  draw(drawOnTop, overrideMode, view);
}

void CListTrace::draw(DrawMethod method, std::uint32_t overrideMode, const TextView& view) {
  for (Walk walk(*this); walk; walk.advance()) {
    const ComPtr<IDispatch> object = (*walk)->object;
    const std::uint32_t mode = overrideMode != 0 ? overrideMode : (*walk)->drawingMode;
    ComPtr<IGLDraw> drawable;
    if (FAILED(object.As(&drawable)) || !drawable) {
      continue;
    }
    ComPtr<ITextView> text;
    if (SUCCEEDED(object.As(&text)) && text) {
      text->setTextView(view);
    }
    throwIfFailed(method(*drawable.Get(), static_cast<int>(mode)), drawable.Get(),
                  __uuidof(IGLDraw));
  }
}

}  // namespace zyn
