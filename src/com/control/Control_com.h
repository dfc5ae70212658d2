#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <initializer_list>
#include <string>

#include "com/ComIdentity_com.h"
#include "com/control/Activation_com.h"
#include "com/control/ActiveWindow_com.h"
#include "com/control/ClientSite_com.h"
#include "com/control/ConnectionPoint_com.h"
#include "com/control/ControlFacets_com.h"
#include "com/control/ControlHooks_com.h"
#include "com/control/ControlState_com.h"
#include "com/control/DataObjectFacet_com.h"
#include "com/control/InPlaceFacets_com.h"
#include "com/control/OleObjectFacet_com.h"
#include "com/control/PaintPause_com.h"
#include "com/control/PersistFacets_com.h"
#include "com/control/ViewObjectFacet_com.h"

namespace zyn {

/// What is fixed for a class of controls. The references are to constants of the module.
struct ControlDescription {
  const CLSID& id;
  const IID& events;  ///< the default outgoing dispinterface
  const wchar_t* progId;
  Extent initialExtent;
};

/// The status that the controls are registered with: recompose on resize, cannot be linked from
/// inside, inside-out, active when visible, wants its site first.
inline constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                     OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                     OLEMISC_SETCLIENTSITEFIRST;
static_assert(kMiscStatus == 131473);

/// An ActiveX control towards its container, whatever it shows: site, activation, window, advise
/// sinks, persistent state, and the interfaces for all that. What it shows is up to the class that
/// derives from it through ControlClass, which is where its use is described. What is public here
/// is for the parts of the control among themselves.
class Control : public ControlHooks, private ConnectionOwner {
 public:
  ComIdentity& identity() noexcept { return identity_; }
  const ControlDescription& description() const noexcept { return description_; }
  ClientSite& site() noexcept { return site_; }
  Activation& activation() noexcept { return activation_; }
  ActiveWindow& activeWindow() noexcept { return window_; }
  ViewAdvice& viewAdvice() noexcept { return viewAdvice_; }
  ControlState& state() noexcept { return state_; }
  ConnectionPoint& events() noexcept { return events_; }
  ConnectionPoint& propertyNotifications() noexcept { return propertyNotifications_; }
  ViewObjectFacet& viewObject() noexcept { return viewObject_; }
  OleObjectFacet& oleObject() noexcept { return oleObject_; }
  IDataObject* dataObject() noexcept { return &dataObject_; }
  IOleInPlaceActiveObject* activeObject() noexcept { return &activeObject_; }

  HWND window() const noexcept { return window_.handle(); }

  /// Client area of the window in pixels; empty without a window.
  SIZE clientSize() const noexcept { return window_.clientSize(); }

  void repaint() noexcept;

  void setSite(IOleClientSite* site);

  /// A property of the surroundings changed; DISPID_UNKNOWN: any of them.
  void surroundingsChanged(DISPID property);

  /// Whether the container has switched the user's input off.
  bool ignoresInput() const noexcept { return inputOff_; }

  /// Ends activation and, unless it is closed already, has the control saved and tells those who
  /// watch it.
  void close(DWORD saveOption);
  void reopen() noexcept { closed_ = false; }

  /// The container's request for a size. The window stays as it is.
  void setExtent(Extent extent);

  /// Size of the picture in pixels: of the window while there is one, otherwise of the extent on
  /// the screen.
  SIZE pictureSize() const noexcept;

  /// Something outside of the control's own window shows the control and is out of date.
  void pictureChanged() noexcept;

  void freezeEvents(bool freeze) noexcept;

  /// What the user calls objects of this class.
  std::wstring userType() const;

  /// A reference that keeps the control alive; null once it is being destroyed.
  Microsoft::WRL::ComPtr<IUnknown> keepAlive() noexcept;

 protected:
  Control(ComIdentity& identity, const ControlDescription& description);
  ~Control() override = default;

  /// To be held while the view's rendering context is used for anything else than its picture.
  PaintPause pausePainting() noexcept { return PaintPause(window_); }

  template <class... Arguments>
  void fire(DISPID event, const Arguments&... arguments) noexcept {
    fireEvent(event, {EventArgument(arguments)...});
  }

  /// The container's window, as an owner for dialogs; null when it does not tell.
  HWND dialogOwner() const;

  /// To be held while a dialog of the control is open.
  ModalScope modalScope() const { return ModalScope(activation_.frame()); }

  /// A property of the surroundings, if the container tells it.
  std::optional<_variant_t> ambient(DISPID property) const { return site_.ambient(property); }

  /// A property of the control changed: what is saved differs, and property sinks hear of it.
  void propertyChanged(DISPID property) noexcept;

  /// Takes the window down and lets go of everything outside, without telling anybody.
  void shutDown() noexcept;

  /// Gives one of the interfaces of a control.
  HRESULT queryPart(REFIID iid, void** out) noexcept;

 private:
  // ConnectionOwner
  IUnknown* connectionIdentity() noexcept override { return identity_.controllingUnknown(); }
  IConnectionPointContainer* connectionPoints() noexcept override { return &connectionPoints_; }

  void fireEvent(DISPID event, std::initializer_list<EventArgument> arguments) noexcept;
  IUnknown* findPart(REFIID iid) noexcept;

  ComIdentity& identity_;
  ControlDescription description_;
  bool shutDown_ = false;
  bool closed_ = true;  ///< no site was set and nothing was activated since the last Close
  bool inputOff_ = false;
  int eventFreezes_ = 0;
  ClientSite site_;
  ViewAdvice viewAdvice_;
  ControlState state_;
  Activation activation_;
  ActiveWindow window_;
  ConnectionPoint events_;
  ConnectionPoint propertyNotifications_;

  OleObjectFacet oleObject_;
  InPlaceObjectFacet inPlaceObject_;
  InPlaceActiveObjectFacet activeObject_;
  OleControlFacet oleControl_;
  ViewObjectFacet viewObject_;
  DataObjectFacet dataObject_;
  PersistStreamFacet persistStream_;
  PersistStorageFacet persistStorage_;
  PersistPropertyBagFacet persistPropertyBag_;
  QuickActivateFacet quickActivate_;
  ProvideClassInfoFacet classInfo_;
  ConnectionPointsFacet connectionPoints_;
};

}  // namespace zyn
