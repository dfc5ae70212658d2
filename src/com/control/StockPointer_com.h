#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <wrl/client.h>

#include <cstdint>
#include <span>
#include <vector>

namespace zyn {

/// The stock properties MousePointer and MouseIcon of a control.
class StockPointer {
 public:
  /// MousePointer: 0 default, 1 to 15 standard shapes, 99 the icon.
  long shape() const noexcept { return shape_; }
  void setShape(long shape) noexcept { shape_ = shape; }

  /// MouseIcon; null for none.
  Microsoft::WRL::ComPtr<IPictureDisp> icon() const { return icon_; }
  void setIcon(Microsoft::WRL::ComPtr<IPictureDisp> icon) noexcept;

  /// Takes a copy, so that later changes of the given picture do not show.
  void copyIcon(IPictureDisp* icon);

  /// The system's pointer for the shape; null for the default one.
  HCURSOR cursor() const noexcept;

  /// The icon as its picture object saves itself; empty for none.
  std::vector<std::uint8_t> savedIcon() const;

  /// Takes over both properties; throws and leaves both when the icon cannot be read.
  void restore(long shape, std::span<const std::uint8_t> savedIcon);

 private:
  long shape_ = 0;
  Microsoft::WRL::ComPtr<IPictureDisp> icon_;
};

}  // namespace zyn
