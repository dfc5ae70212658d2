#include <iterator>

#include "support/HostWorld_win.h"

namespace zyn::test {

namespace {

using Life = std::shared_ptr<ObjectLife>;

/// An action on a view, left out where its place is empty.
template <void (*act)(HostWorld&, const Life&)>
void onView(HostWorld& world) {
  if (const Life life = world.anyView()) act(world, life);
}
template <void (*act)(HostWorld&, const Life&)>
void onContext(HostWorld& world) {
  if (const Life life = world.anyContext()) act(world, life);
}

// --- lists ---------------------------------------------------------------------------------------

void add(HostWorld& world, const Life& life) {
  Thing* const thing = world.anyThing();
  world.addThing(life, thing, [&] {
    life->withView([&](auto* view) { view->Add(thing->held.Get(), life->number); });
  });
}

void addToContext(HostWorld& world, const Life& life) {
  Thing* const thing = world.anyThing();
  world.addThing(life, thing, [&] {
    if (life->context3D) {
      life->context3D->Add(thing->held.Get(), life->number);
    } else {
      life->context2D->Add(thing->held.Get(), life->number);
    }
  });
}

void remove(HostWorld& world, const Life& life) {
  Thing* const thing = world.anyThing();
  if (life->view3D) {
    life->drawn.removeOne(thing);
    life->view3D->Remove(thing->held.Get());
  } else {
    life->drawn.removeAll(thing);
    life->view2D->Remove(thing->held.Get());
  }
}

void removeAll(HostWorld&, const Life& life) {
  life->drawn.clear();
  life->withView([](auto* view) { view->RemoveAll(); });
}

void removeAllFromContext(HostWorld&, const Life& life) {
  if (!life->context3D) return;
  life->drawn.clear();
  life->context3D->RemoveAll();
}

void addSelection(HostWorld& world, const Life& life) {
  Thing* const thing = world.anyThing();
  life->withView([&](auto* view) { view->AddSelection(thing->held.Get()); });
  life->selected.add(thing);
}

void removeSelection(HostWorld& world, const Life& life) {
  Thing* const thing = world.anyThing();
  life->selected.removeOne(thing);
  life->withView([&](auto* view) { view->RemoveSelection(thing->held.Get()); });
}

void removeAllSelection(HostWorld&, const Life& life) {
  life->selected.clear();
  life->withView([](auto* view) { view->RemoveAllSelection(); });
}

void setActiveProfile(HostWorld& world, const Life& life) {
  if (!life->view2D) return;
  Thing* const thing = world.oneIn(4) ? nullptr : world.anyThing();
  // The world may give the thing up while it is asked.
  const auto object = thing ? thing->held : nullptr;
  ComPtr<IZYNProfil> profile;
  if (object) object.As(&profile);
  const bool taken = profile != nullptr;
  profile.Reset();
  life->view2D->setActiveProfil(object.Get());
  life->profile = taken ? thing : nullptr;
}

void changeThing(HostWorld& world) {
  Thing* const thing = world.anyThing();
  if (thing->watched) return;
  ComPtr<IZYNGLTriangle> triangle;
  if (SUCCEEDED(thing->held.As(&triangle))) {
    triangle->setPoint(world.below(3), world.below(3) - 1.0, world.below(3) - 1.0, 0);
    triangle->put_Priority(world.below(20));
  }
  ComPtr<IZYNGLTexte> text;
  if (SUCCEEDED(thing->held.As(&text))) text->put_TypeCotation(world.below(4));
}

// --- pictures ------------------------------------------------------------------------------------

void paint(HostWorld&, const Life& life) {
  RedrawWindow(life->window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

void repaint(HostWorld&, const Life& life) {
  life->withView([](auto* view) { view->Repaint(); });
}

void printClient(HostWorld& world, const Life& life) {
  const HDC dc = CreateCompatibleDC(nullptr);
  world.drawPicture(life);
  SendMessageW(life->window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  DeleteDC(dc);
}

void drawView3D(HostWorld& world, const Life& life) {
  const auto picture = queryFor<IViewObject>(life->object.Get());
  const HDC dc = CreateCompatibleDC(nullptr);
  const RECTL bounds = {0, 0, 16, 16};
  world.drawPicture(life);
  picture->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
  DeleteDC(dc);
}

void getData(HostWorld& world, const Life& life) {
  const auto data = queryFor<IDataObject>(life->object.Get());
  FORMATETC format = {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
  STGMEDIUM medium = {};
  world.drawPicture(life);
  data->GetData(&format, &medium);
  ReleaseStgMedium(&medium);
}

void exportPicture(HostWorld& world, const Life& life) {
  const _bstr_t file = bstr(world.folder().file(L"picture"));
  const auto write = [&](auto* context) {
    ComPtr<IPictureDisp> picture;
    switch (world.below(6)) {
      case 0:
        context->GetPictureDisp(picture.GetAddressOf());
        break;
      case 1:
        context->CreatePNG(nullptr, file);
        break;
      default:
        context->CreateBitmap(file);
    }
  };
  if (life->context3D) {
    write(life->context3D.Get());
  } else {
    write(life->context2D.Get());
  }
}

void createSurface(HostWorld& world, const Life& life) {
  long made = 0;
  const long size = world.below(4) * 8;
  if (life->context3D) {
    life->context3D->CreateContext(size, 16, &made);
  } else {
    life->context2D->CreateContexte(size, 16, &made);
  }
}

// --- camera, modes, picks ------------------------------------------------------------------------

void moveCamera(HostWorld& world, const Life& life) {
  if (life->view3D) {
    IZYNVue3D* const view = life->view3D.Get();
    switch (world.below(5)) {
      case 0:
        view->initView(0);
        break;
      case 1:
        view->ZoomTotal(0.1);
        break;
      case 2:
        view->UpdateParams();
        break;
      case 3:
        view->LastView();
        break;
      default:
        view->RotateH(10);
    }
    return;
  }
  IZYNVue2D* const view = life->view2D.Get();
  switch (world.below(4)) {
    case 0:
      view->initView();
      break;
    case 1:
      view->UpdateParams();
      break;
    case 2:
      view->LastView();
      break;
    default:
      view->ViewRect(-2, 2, -2, 2);
  }
}

void showGraph(HostWorld&, const Life& life) {
  if (!life->view2D) return;
  const _bstr_t label(L"x");
  life->view2D->GraphView(0, 0, 0, label, nullptr, nullptr, -1, 1, 1, 1, 1, nullptr, nullptr,
                          nullptr, -1, 1, 1, 1, 1);
}

void changeMode(HostWorld& world, const Life& life) {
  const short mode = static_cast<short>(world.below(7) - 2);
  if (life->view3D) {
    life->view3D->put_MouseMode(mode);
  } else {
    life->view2D->put_Mode(mode);
  }
}

void changeSwitch(HostWorld& world, const Life& life) {
  const VARIANT_BOOL on = world.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE;
  life->withView([&](auto* view) {
    switch (world.below(6)) {
      case 0:
        view->put_WindowSelection(on);
        break;
      case 1:
        view->put_SelectSuperpose(on);
        break;
      case 2:
        view->put_MiddleButtonActive(on);
        break;
      case 3:
        view->put_DrawCursor(on);
        break;
      case 4:
        view->put_PointAntialiasing(on);
        break;
      default:
        view->setBackground(0.5F, 0.5F, 0.5F);
    }
  });
}

void pick(HostWorld&, const Life& life) {
  if (!life->view3D) return;
  _variant_t names;
  life->view3D->getSelectionUnderMouse(12, 8, &names);
}

// --- mouse, keys and messages --------------------------------------------------------------------

LPARAM anyPoint(HostWorld& world) { return MAKELPARAM(world.below(24), world.below(16)); }

MSG anyInput(HostWorld& world, const Life& life) {
  static constexpr UINT kMessages[] = {
      WM_MOUSEMOVE,   WM_MOUSEMOVE,     WM_LBUTTONDOWN,   WM_LBUTTONUP,   WM_LBUTTONDBLCLK,
      WM_MBUTTONDOWN, WM_MBUTTONUP,     WM_MBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONUP,
      WM_MOUSEWHEEL,  WM_MOUSELEAVE,    WM_CANCELMODE,    WM_TIMER,       WM_KEYDOWN,
      WM_KEYUP,       WM_CAPTURECHANGED};
  static constexpr WPARAM kKeys[] = {0, MK_LBUTTON, MK_LBUTTON, MK_MBUTTON, MK_CONTROL, MK_SHIFT};
  const UINT message = kMessages[world.below(static_cast<int>(std::size(kMessages)))];
  WPARAM keys = kKeys[world.below(static_cast<int>(std::size(kKeys)))];
  if (message == WM_MOUSEWHEEL) keys = MAKEWPARAM(0, 120);
  if (message == WM_KEYDOWN || message == WM_KEYUP) keys = VK_LEFT;
  return {life->window(), message, keys, anyPoint(world), 0, {}};
}

void sendInput(HostWorld& world, const Life& life) {
  const MSG input = anyInput(world, life);
  SendMessageW(input.hwnd, input.message, input.wParam, input.lParam);
}

void postInput(HostWorld& world, const Life& life) {
  const MSG input = anyInput(world, life);
  if (input.hwnd) PostMessageW(input.hwnd, input.message, input.wParam, input.lParam);
}

void drag(HostWorld& world, const Life& life) {
  const bool left = !world.oneIn(4);
  const WPARAM held = left ? MK_LBUTTON : MK_MBUTTON;
  SendMessageW(life->window(), left ? WM_LBUTTONDOWN : WM_MBUTTONDOWN, held, anyPoint(world));
  SendMessageW(life->window(), WM_MOUSEMOVE, held, anyPoint(world));
  SendMessageW(life->window(), left ? WM_LBUTTONUP : WM_MBUTTONUP, 0, anyPoint(world));
}

void loseCapture(HostWorld&) { ReleaseCapture(); }

void loseFocus(HostWorld&) { SetFocus(nullptr); }

void pumpMessages(HostWorld&) { HostWorld::pump(); }

// --- connections ---------------------------------------------------------------------------------

Listener& anyListener(HostWorld& world, const Life& life) {
  return *life->listeners[static_cast<std::size_t>(
      world.below(static_cast<int>(life->listeners.size())))];
}

void advise(HostWorld& world, const Life& life) {
  Listener& listener = anyListener(world, life);
  if (listener.connections.size() < 3) life->advise(listener);
}

void unadvise(HostWorld& world, const Life& life) {
  Listener& listener = anyListener(world, life);
  if (listener.connections.empty()) return;
  const DWORD cookie = listener.connections.back();
  listener.connections.pop_back();
  life->eventSource->Unadvise(cookie);
}

void freeze(HostWorld&, const Life& life) { life->freeze(life->freezes == 0); }

void watchView(HostWorld& world, const Life& life) {
  const auto view = queryFor<IViewObject>(life->object.Get());
  IAdviseSink* const sink = world.oneIn(3) ? nullptr : &life->container->sink;
  view->SetAdvise(DVASPECT_CONTENT, world.oneIn(4) ? ADVF_PRIMEFIRST | ADVF_ONLYONCE : 0, sink);
}

void watchFate(HostWorld& world, const Life& life) {
  DWORD connection = 0;
  if (world.oneIn(2)) {
    life->object->Advise(&life->container->sink, &connection);
    return;
  }
  const auto data = queryFor<IDataObject>(life->object.Get());
  FORMATETC format = {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
  data->DAdvise(&format, ADVF_NODATA, &life->container->sink, &connection);
}

// --- container -----------------------------------------------------------------------------------

void show(HostWorld& world, const Life& life) {
  if (!IsWindow(life->container->window())) return;
  life->show(world.oneIn(2) ? OLEIVERB_SHOW : OLEIVERB_UIACTIVATE);
}

void hide(HostWorld&, const Life& life) { life->show(OLEIVERB_HIDE); }

void deactivateUi(HostWorld&, const Life& life) { life->inPlace->UIDeactivate(); }

void deactivate(HostWorld&, const Life& life) { life->inPlace->InPlaceDeactivate(); }

void resize(HostWorld& world, const Life& life) {
  const RECT rects[] = {{0, 0, 0, 0}, {0, 0, 24, 16}, {2, 3, 17, 20}, {0, 0, 1, 1}};
  const RECT position = rects[world.below(4)];
  life->inPlace->SetObjectRects(&position, world.oneIn(2) ? &position : &rects[1]);
}

void closeView(HostWorld&, const Life& life) { life->object->Close(OLECLOSE_NOSAVE); }

void changeSite(HostWorld& world, const Life& life) {
  life->object->SetClientSite(world.oneIn(2) ? nullptr : &life->container->site);
}

void destroyWindow(HostWorld&, const Life& life) {
  if (const HWND window = life->window()) DestroyWindow(window);
}

void destroyContainer(HostWorld&, const Life& life) { life->container->closeWindow(); }

void releaseView(HostWorld& world, const Life& life) { world.release(life); }

void closeAndRelease(HostWorld& world, const Life& life) {
  life->object->Close(OLECLOSE_NOSAVE);
  if (life->isHeld()) life->object->SetClientSite(nullptr);
  if (life->isHeld()) world.release(life);
}

}  // namespace

const std::vector<HostAction>& hostActions() {
  static const std::vector<HostAction> actions = {
      {"add", 110, false, onView<add>},
      {"add to a context", 25, false, onContext<addToContext>},
      {"remove", 60, false, onView<remove>},
      {"remove all", 15, false, onView<removeAll>},
      {"remove all from a context", 8, false, onContext<removeAllFromContext>},
      {"add to the selection", 40, false, onView<addSelection>},
      {"remove from the selection", 30, false, onView<removeSelection>},
      {"empty the selection", 8, false, onView<removeAllSelection>},
      {"set the active trace", 15, false, onView<setActiveProfile>},
      {"renew a scene object", 30, true, [](HostWorld& world) { world.renewThing(); }},
      {"change a scene object", 30, true, changeThing},
      {"paint", 100, true, onView<paint>},
      {"ask for a repaint", 40, true, onView<repaint>},
      {"print the window", 1, true, onView<printClient>},
      {"draw a picture of the view", 1, true, onView<drawView3D>},
      {"get the view's data", 1, true, onView<getData>},
      {"export", 30, true, onContext<exportPicture>},
      {"create a surface", 4, true, onContext<createSurface>},
      {"move the camera", 40, false, onView<moveCamera>},
      {"show a graph", 6, false, onView<showGraph>},
      {"change the mouse mode", 40, true, onView<changeMode>},
      {"change a switch", 25, true, onView<changeSwitch>},
      {"pick", 30, true, onView<pick>},
      {"send input", 160, false, onView<sendInput>},
      {"post input", 50, true, onView<postInput>},
      {"drag", 60, false, onView<drag>},
      {"let go of the mouse", 10, true, loseCapture},
      {"take the focus away", 5, true, loseFocus},
      {"run a message loop", 40, false, pumpMessages},
      {"advise", 40, true, onView<advise>},
      {"unadvise", 30, true, onView<unadvise>},
      {"freeze or thaw the events", 8, true, onView<freeze>},
      {"watch the view", 8, true, onView<watchView>},
      {"watch the view's fate", 4, true, onView<watchFate>},
      {"show", 25, true, onView<show>},
      {"hide", 5, true, onView<hide>},
      {"deactivate the user interface", 8, true, onView<deactivateUi>},
      {"deactivate", 3, true, onView<deactivate>},
      {"resize", 15, false, onView<resize>},
      {"close", 2, true, onView<closeView>},
      {"change the site", 3, true, onView<changeSite>},
      {"destroy the window", 2, true, onView<destroyWindow>},
      {"destroy the container", 2, true, onView<destroyContainer>},
      {"release", 4, true, onView<releaseView>},
      {"close and release", 3, true, onView<closeAndRelease>},
      {"release a context", 6, true, onContext<releaseView>},
      {"create", 10, true, [](HostWorld& world) { world.createObject(); }},
  };
  return actions;
}

}  // namespace zyn::test
