#include "vector/Metafile_win.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <new>
#include <numeric>
#include <string>

#include "core/PixelImage.h"
#include "core/Utf8.h"
#include "objects/text/GdiFont_win.h"
#include "platform/Failure_win.h"
#include "platform/WinHandles_win.h"
#include "plot/Dashes.h"
#include "vector/SimpleText.h"
#include "vector/VectorSink.h"

namespace zyn {

namespace {

/// Units of the metafile in a pixel: it is printed, and shown larger than it is.
constexpr double kUnits = 16;

/// Figures that are filled at once: the time that GDI takes grows with their square.
constexpr std::size_t kFigures = 256;

struct CloseObject {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using UniqueObject = std::unique_ptr<void, CloseObject>;

[[noreturn]] void fail() { throw systemFailure(GetLastError(), L"The metafile could not be made"); }

/// A pen, a brush or a font in a device context for a scope.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), object_(object), previous_(SelectObject(dc, object)) {
    if (!object_ || !previous_) {
      fail();
    }
  }
  ~Selected() { SelectObject(dc_, previous_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  UniqueObject object_;
  HGDIOBJ previous_;
};

/// The state of a device context, given back at the end.
class SavedState {
 public:
  explicit SavedState(HDC dc) : dc_(dc), saved_(SaveDC(dc)) {
    if (saved_ == 0) {
      fail();
    }
  }
  ~SavedState() { RestoreDC(dc_, saved_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

 private:
  HDC dc_;
  int saved_;
};

BYTE byteOf(double component) {
  return static_cast<BYTE>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

COLORREF colourOf(const DrawColour& colour) {
  return RGB(byteOf(colour.r), byteOf(colour.g), byteOf(colour.b));
}

/// A bitmap of 32 bits a pixel in a device context of its own, rows from the bottom up.
class SourceBitmap {
 public:
  SourceBitmap(int width, int height) : dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!dc_ || !bitmap_) {
      fail();
    }
    bytes = static_cast<BYTE*>(bits);
    previous_ = SelectObject(dc_.get(), bitmap_.get());
  }
  ~SourceBitmap() { SelectObject(dc_.get(), previous_); }
  SourceBitmap(const SourceBitmap&) = delete;
  SourceBitmap& operator=(const SourceBitmap&) = delete;

  HDC dc() const { return dc_.get(); }

  BYTE* bytes = nullptr;  ///< blue, green, red, alpha

 private:
  UniqueDC dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ previous_ = nullptr;
};

class Recording final : private VectorSink {
 public:
  Recording(HDC dc, const VectorPicture& picture)
      : dc_(dc), width_(picture.width), height_(picture.height) {
    SetMapMode(dc_, MM_ANISOTROPIC);
    const auto width = static_cast<int>(std::lround(picture.width));
    const auto height = static_cast<int>(std::lround(picture.height));
    SetWindowExtEx(dc_, unitsOf(width), unitsOf(height), nullptr);
    SetViewportExtEx(dc_, width, height, nullptr);
    SetBkMode(dc_, TRANSPARENT);
    SetPolyFillMode(dc_, WINDING);
    SetTextAlign(dc_, TA_LEFT | TA_BASELINE);
    putOut(picture, *this);
  }

 private:
  void beginLayer(const std::optional<PixelBox>& clip) override {
    if (SaveDC(dc_) == 0) {
      fail();
    }
    if (clip) {
      const RECT box = placeOf(*clip);
      IntersectClipRect(dc_, box.left, box.top, box.right, box.bottom);
    }
  }

  void endLayer() override { RestoreDC(dc_, -1); }

  /// Dashes are lines of their own: not every system draws those of wide pens.
  void strokeLines(const PixelLines& lines, const Stroke& stroke) override {
    if (!stroke.dashes.empty()) {
      const PixelLines parts = dashed(lines, stroke.dashes, {0, width_, 0, height_});
      return parts.points.empty()
                 ? void()
                 : strokeLines(parts, {.colour = stroke.colour, .width = stroke.width});
    }
    const Selected pen(dc_, penOf(stroke));
    Polygons polygons = polygonsOf(lines);
    // Thin lines between two pixels are to light the one on which they lie.
    for (POINT& point : polygons.points) {
      point = {point.x - 1, point.y - 1};
    }
    PolyPolyline(dc_, polygons.points.data(), polygons.counts.data(),
                 static_cast<DWORD>(polygons.counts.size()));
  }

  void fillOutlines(const PixelLines& outlines, const DrawColour& colour) override {
    const Polygons polygons = polygonsOf(outlines);
    const std::vector<INT> counts(polygons.counts.begin(), polygons.counts.end());
    const POINT* points = polygons.points.data();
    const RECT bounds = boundsOf(polygons);
    fillFigures(counts.size(), colour, bounds, [&](std::size_t first, std::size_t end) {
      PolyPolygon(dc_, points, counts.data() + first, static_cast<int>(end - first));
      points = std::accumulate(counts.data() + first, counts.data() + end, points);
    });
    if (colour.alpha >= 1 && counts.size() == 1 && isLarge(bounds)) {
      ground_ = colour;
    }
  }

  void fillDiscs(const std::vector<PlanePoint>& middles, double diameter,
                 const DrawColour& colour) override {
    const auto boxAround = [&](const PlanePoint& at) {
      const double r = diameter / 2;
      return placeOf(PixelBox{at.x - r, at.x + r, at.y - r, at.y + r});
    };
    Polygons corners;
    for (const PlanePoint& at : middles) {
      const RECT box = boxAround(at);
      corners.points.push_back({box.left, box.top});
      corners.points.push_back({box.right, box.bottom});
    }
    fillFigures(middles.size(), colour, boundsOf(corners), [&](std::size_t first, std::size_t end) {
      for (std::size_t i = first; i < end; ++i) {
        const RECT box = boxAround(middles[i]);
        Ellipse(dc_, box.left, box.top, box.right, box.bottom);
      }
    });
  }

  void showText(const DrawnText& text) override {
    SetTextColor(dc_, shownColour(text.colour));
    const auto parts = simpleParts(text);
    if (!parts) {
      const std::wstring all = wideOf(text.text);
      return showPart(text, {text.face, all, {}, 0.0});
    }
    for (const SimplePart& part : *parts) {
      showPart(text, part);
    }
  }

  void showImage(const DrawnImage& image) override {
    const PixelImage& pixels = *image.image;
    const SourceBitmap source(pixels.width, pixels.height);
    bool isOpaque = true;
    for (std::size_t i = 0; i < pixels.pixels.size(); i += 4) {
      const unsigned alpha = pixels.pixels[i + 3];
      const auto part = [&](std::size_t k) {
        return static_cast<BYTE>((pixels.pixels[i + k] * alpha + 127) / 255);
      };
      const BYTE pixel[] = {part(2), part(1), part(0), static_cast<BYTE>(alpha)};
      std::copy_n(pixel, 4, source.bytes + i);
      isOpaque = isOpaque && alpha == 255;
    }
    const SavedState saved(dc_);
    SetStretchBltMode(dc_, image.isSmooth ? HALFTONE : COLORONCOLOR);
    const RECT box = placeOf(image.box);
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    if (isOpaque) {
      StretchBlt(dc_, box.left, box.top, width, height, source.dc(), 0, 0, pixels.width,
                 pixels.height, SRCCOPY);
    } else {
      GdiAlphaBlend(dc_, box.left, box.top, width, height, source.dc(), 0, 0, pixels.width,
                    pixels.height, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
    }
  }

  /// Points as GDI takes them.
  struct Polygons {
    std::vector<POINT> points;
    std::vector<DWORD> counts;
  };

  static LONG unitsOf(double pixels) { return std::lround(pixels * kUnits); }

  POINT placeOf(const PlanePoint& at) const { return {unitsOf(at.x), unitsOf(height_ - at.y)}; }

  RECT placeOf(const PixelBox& box) const {
    return {unitsOf(box.left), unitsOf(height_ - box.top), unitsOf(box.right),
            unitsOf(height_ - box.bottom)};
  }

  Polygons polygonsOf(const PixelLines& lines) const {
    Polygons polygons;
    polygons.points.reserve(lines.points.size());
    for (const PlanePoint& point : lines.points) {
      polygons.points.push_back(placeOf(point));
    }
    for (std::size_t i = 0; i < lines.starts.size(); ++i) {
      const std::size_t end =
          i + 1 < lines.starts.size() ? lines.starts[i + 1] : lines.points.size();
      polygons.counts.push_back(static_cast<DWORD>(end - lines.starts[i]));
    }
    return polygons;
  }

  static RECT boundsOf(const Polygons& polygons) {
    constexpr LONG kMost = std::numeric_limits<LONG>::max();
    RECT bounds = {kMost, kMost, -kMost, -kMost};
    for (const POINT& point : polygons.points) {
      bounds = {std::min(bounds.left, point.x), std::min(bounds.top, point.y),
                std::max(bounds.right, point.x), std::max(bounds.bottom, point.y)};
    }
    return bounds;
  }

  /// Whether what is drawn next mostly lies on it.
  bool isLarge(const RECT& bounds) const {
    const double area = 1.0 * (bounds.right - bounds.left) * (bounds.bottom - bounds.top);
    return area >= 0.25 * unitsOf(width_) * unitsOf(height_);
  }

  /// Of lines and texts, which GDI does not know translucent: mixed with the ground.
  COLORREF shownColour(const DrawColour& colour) const {
    const double part = std::clamp(colour.alpha, 0.0, 1.0);
    const auto mixed = [part](double own, double behind) {
      return part * own + (1 - part) * behind;
    };
    return colourOf(
        {mixed(colour.r, ground_.r), mixed(colour.g, ground_.g), mixed(colour.b, ground_.b), 1});
  }

  HPEN penOf(const Stroke& stroke) const {
    const LOGBRUSH brush = {BS_SOLID, shownColour(stroke.colour), 0};
    return ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | PS_JOIN_ROUND,
                        static_cast<DWORD>(std::max(unitsOf(stroke.width), 1L)), &brush, 0,
                        nullptr);
  }

  /// Fills figures that `add(first, end)` adds to a path, which cover no more than the bounds.
  /// Translucent ones together: where they overlap they are one.
  template <class Add>
  void fillFigures(std::size_t count, const DrawColour& colour, const RECT& bounds,
                   const Add& add) {
    const std::size_t most = colour.alpha < 1 ? count : kFigures;
    for (std::size_t first = 0; first < count; first += most) {
      BeginPath(dc_);
      add(first, std::min(first + most, count));
      EndPath(dc_);
      fillPath(colour, bounds);
    }
  }

  /// Fills the path of the device context, which covers no more than the bounds.
  void fillPath(const DrawColour& colour, const RECT& bounds) {
    if (colour.alpha < 1) {
      return fillClip(colour, bounds);
    }
    const Selected brush(dc_, CreateSolidBrush(colourOf(colour)));
    FillPath(dc_);
  }

  /// The same for a translucent colour, which GDI knows of pictures only.
  void fillClip(const DrawColour& colour, const RECT& bounds) {
    const SourceBitmap pixel(1, 1);
    const BYTE components[] = {byteOf(colour.b), byteOf(colour.g), byteOf(colour.r), 255};
    std::copy_n(components, 4, pixel.bytes);
    const SavedState saved(dc_);
    SelectClipPath(dc_, RGN_AND);
    GdiAlphaBlend(dc_, bounds.left, bounds.top, bounds.right - bounds.left,
                  bounds.bottom - bounds.top, pixel.dc(), 0, 0, 1, 1,
                  {AC_SRC_OVER, 0, byteOf(colour.alpha), 0});
  }

  void showPart(const DrawnText& text, const SimplePart& part) {
    const Selected font(dc_, fontOf(text, part.face));
    const double along = part.start * text.emHeight;
    const POINT start =
        placeOf(text.start + (text.isUpright ? PlanePoint{0, along} : PlanePoint{along, 0}));
    std::vector<INT> steps;
    for (std::size_t i = 0; i < part.ends.size(); ++i) {
      const double before = i > 0 ? part.ends[i - 1] : 0.0;
      steps.push_back(static_cast<INT>(unitsOf(part.ends[i] * text.emHeight) -
                                       unitsOf(before * text.emHeight)));
    }
    ExtTextOutW(dc_, start.x, start.y, 0, nullptr, part.text.data(),
                static_cast<UINT>(part.text.size()), steps.empty() ? nullptr : steps.data());
  }

  static HFONT fontOf(const DrawnText& text, const FontFace& face) {
    LOGFONTW wanted = logicalFont(face, -unitsOf(text.emHeight));
    wanted.lfEscapement = wanted.lfOrientation = text.isUpright ? 900 : 0;
    return CreateFontIndirectW(&wanted);
  }

  HDC dc_;
  double width_;
  double height_;
  DrawColour ground_{1, 1, 1, 1};
};

}  // namespace

UniqueMetafile makeMetafile(const VectorPicture& picture) {
  const UniqueWindowDC screen(GetDC(nullptr));
  const auto hundredths = [&](double pixels, int size, int resolution) {
    return std::lround(pixels * 100 * GetDeviceCaps(screen.get(), size) /
                       GetDeviceCaps(screen.get(), resolution));
  };
  const RECT frame = {0, 0, hundredths(picture.width, HORZSIZE, HORZRES),
                      hundredths(picture.height, VERTSIZE, VERTRES)};
  const HDC dc = CreateEnhMetaFileW(screen.get(), nullptr, &frame, nullptr);
  if (!dc) {
    fail();
  }
  UniqueMetafile metafile;
  try {
    const Recording recording(dc, picture);
  } catch (...) {
    metafile.reset(CloseEnhMetaFile(dc));
    throw;
  }
  metafile.reset(CloseEnhMetaFile(dc));
  if (!metafile) {
    fail();
  }
  return metafile;
}

std::vector<std::uint8_t> bytesOf(const UniqueMetafile& metafile) {
  std::vector<std::uint8_t> bytes(GetEnhMetaFileBits(metafile.get(), 0, nullptr));
  if (bytes.empty() || GetEnhMetaFileBits(metafile.get(), static_cast<UINT>(bytes.size()),
                                          bytes.data()) != bytes.size()) {
    fail();
  }
  return bytes;
}

}  // namespace zyn
