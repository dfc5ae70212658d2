// SVG, PDF and EMF files of graphs and of published frames; metafiles on the clipboard and printed.
// With a folder in ZYN_VECTOR_FOLDER the files stay there, and what other programs have made of
// them is compared: tools/check_vectors.sh runs that.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <optional>

#include "support/EventListener_win.h"
#include "support/FailingImport_win.h"
#include "support/Graph_win.h"
#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/OffscreenContext_win.h"
#include "support/Paper_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 360;

/// Something that shows a graph, and the words in it.
class GraphScene {
 public:
  virtual ~GraphScene() = default;
  virtual IDispatch* object() = 0;

  std::vector<std::wstring> words;
};

void addSeries(const Graph& graph, long kind, double shift, const wchar_t* name) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 40; ++i) {
    x.push_back(i * 0.25);
    y.push_back(shift + std::sin(i * 0.3));
  }
  const auto series = makeSeries(x, y);
  series->put_TypeTrace(kind);
  series->put_Nom(_bstr_t(name));
  series->put_Base(shift - 1.5);
  series->put_Epaisseur(1.5);
  if (kind == 2) series->put_Marqueur(1);
  if (kind == 1) series->put_Pointille(VARIANT_TRUE);
  require(graph.add(series.Get()), "Ajouter");
}

void fill(const Graph& graph) {
  graph->put_Actif(VARIANT_TRUE);
  graph->put_Titre(_bstr_t(L"Contr\u00F4le & <mesure>"));
  graph.axis(0)->put_Titre(_bstr_t(L"Temps"));
  graph.axis(0)->put_Unite(_bstr_t(L"\u00B5s"));
  graph.axis(1)->put_Titre(_bstr_t(L"\u00D8 \u0394"));
  graph.axis(0)->put_GrilleVisible(VARIANT_TRUE);
  graph.axis(1)->put_GrilleVisible(VARIANT_TRUE);
  for (long kind = 0; kind < 5; ++kind) {
    addSeries(graph, kind, 3.0 * static_cast<double>(kind),
              (L"S\u00E9rie " + std::to_wstring(kind)).c_str());
  }
}

ComPtr<IZYNPolyligne> makeTrace(const std::vector<double>& x, const std::vector<double>& y) {
  auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  require(trace->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
  return trace;
}

class ContextScene : public GraphScene {
 public:
  ContextScene() {
    fill(graph_);
    words = {L"Contr\u00F4le & <mesure>", L"Temps (\u00B5s)", L"\u00D8 \u0394", L"S\u00E9rie 4"};
  }
  IDispatch* object() override { return context_.get(); }

 private:
  OffscreenGraph context_{kWidth, kHeight};
  Graph graph_{context_.get()};
};

/// A trace, triangles and a sprite of the draw list within a graph.
class ObjectScene : public GraphScene {
 public:
  ObjectScene() {
    graph_->put_Actif(VARIANT_TRUE);
    graph_.axis(0)->setPlage(0, 10);
    graph_.axis(1)->setPlage(0, 10);
    const auto trace = makeTrace({1, 3, 5, 7, 9}, {2, 8, 3, 9, 4});
    require(trace->setColor(0, 0, 1, 1), "setColor");
    require(trace->put_Epaisseur(3), "put_Epaisseur");
    require(host_->Add(trace.Get(), 0), "Add");
    for (const auto& each : makeRectangle(2, 4, 5, 9, 0, kGreen, 1)) {
      require(host_->Add(each.Get(), 0), "Add");
    }
    const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
    require(sprite->putref_Picture(pictureOfBitmap24(makeQuarters(80, 60)).Get()), "Picture");
    require(sprite->setPosition(6.03, 1.02, 0), "setPosition");
    require(sprite->setOrigine(5, 7), "setOrigine");
    require(host_->Add(sprite.Get(), 0), "Add");
    words = {L"10"};
  }
  IDispatch* object() override { return host_.get(); }

 private:
  View2DHost host_{{kWidth, kHeight}};
  Graph graph_{host_.get()};
};

/// The frame of GraphView around a trace.
class FrameScene : public GraphScene {
 public:
  FrameScene() {
    const auto trace = makeTrace({0, 2, 4, 6, 8, 10}, {0, 30, 10, 45, 20, 50});
    require(trace->setColor(1, 0, 0, 1), "setColor");
    require(trace->put_Epaisseur(2), "put_Epaisseur");
    require(host_->Add(trace.Get(), 0), "Add");
    _bstr_t time(L"temps");
    _bstr_t seconds(L"s");
    _bstr_t length(L"\u00D8 tige");
    _bstr_t unit(L"mm");
    require(host_->GraphView(0, 0, 1, time.GetBSTR(), seconds.GetBSTR(), nullptr, 0, 10, 2, 1, 1,
                             length.GetBSTR(), unit.GetBSTR(), nullptr, 0, 50, 10, 5, 0.2),
            "GraphView");
    words = {L"temps", L"\u00D8 tige", L"40"};
  }
  IDispatch* object() override { return host_.get(); }

 private:
  View2DHost host_{{kWidth, kHeight}};
};

struct SceneClass {
  const wchar_t* name;
  std::unique_ptr<GraphScene> (*make)();
};

template <class Scene>
std::unique_ptr<GraphScene> make() {
  return std::make_unique<Scene>();
}

const SceneClass kScenes[] = {
    {L"graph", make<ContextScene>}, {L"objects", make<ObjectScene>}, {L"frame", make<FrameScene>}};

/// A picture in which each pixel is the mean of `times` by `times` ones.
Image reduced(const Image& image, int times) {
  Image result(image.width() / times, image.height() / times);
  for (int y = 0; y < result.height(); ++y) {
    for (int x = 0; x < result.width(); ++x) {
      Rgb sum;
      for (int i = 0; i < times * times; ++i) {
        const Rgb& each = image.at(times * x + i % times, times * y + i / times);
        sum = {sum.r + each.r, sum.g + each.g, sum.b + each.b};
      }
      const int count = times * times;
      result.at(x, y) = {sum.r / count, sum.g / count, sum.b / count};
    }
  }
  return result;
}

/// Pixels of which the other picture has nothing alike within one pixel, as a part of all.
double unlikePart(const Image& one, const Image& other) {
  int unlike = 0;
  for (int y = 1; y + 1 < one.height(); ++y) {
    for (int x = 1; x + 1 < one.width(); ++x) {
      bool isFound = false;
      for (int dy = -1; dy <= 1 && !isFound; ++dy) {
        for (int dx = -1; dx <= 1 && !isFound; ++dx) {
          isFound = difference(one.at(x, y), other.at(x + dx, y + dy)) <= 96;
        }
      }
      unlike += isFound ? 0 : 1;
    }
  }
  return unlike / (1.0 * one.width() * one.height());
}

/// `tolerance`: of 255, in the mean.
void expectAlike(const Image& shown, const Image& picture, double tolerance) {
  ASSERT_EQ(shown.width(), picture.width());
  ASSERT_EQ(shown.height(), picture.height());
  EXPECT_LT(meanDifference(shown, picture), tolerance);
  // The digits of published frames are bitmaps of their own.
  constexpr double kMostUnlike = 0.012;
  EXPECT_LT(unlikePart(shown, picture), kMostUnlike);
  EXPECT_LT(unlikePart(picture, shown), kMostUnlike);
}

class VectorFiles : public HostTest, public testing::WithParamInterface<SceneClass> {
 protected:
  VectorFiles() {
    if (const wchar_t* const kept = _wgetenv(L"ZYN_VECTOR_FOLDER")) kept_ = kept;
  }

  std::filesystem::path file(const std::wstring& extension) const {
    const std::wstring name = GetParam().name + extension;
    return kept_ ? *kept_ / name : folder_.file(name);
  }

  Bytes exported(const std::wstring& extension) {
    const CallResult result = callMethod(scene_->object(), L"Exporter", {bstr(file(extension))});
    EXPECT_EQ(result.code(), S_OK) << std::filesystem::path(result.description);
    return readFile(file(extension));
  }

  Image picture() {
    exported(L".png");
    return decodeImageFile(file(L".png")).image;
  }

  std::optional<std::filesystem::path> kept_;
  TempFolder folder_;
  std::unique_ptr<GraphScene> scene_ = GetParam().make();
};

std::string utf8(const std::wstring& text) {
  const auto path = std::filesystem::path(text).u8string();
  return {path.begin(), path.end()};
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

TEST_P(VectorFiles, SvgHoldsTheWords) {
  const Bytes bytes = exported(L".svg");
  const std::string text(bytes.begin(), bytes.end());
  for (const std::wstring& word : scene_->words) {
    const std::string escaped =
        replaced(replaced(replaced(utf8(word), "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
    EXPECT_NE(text.find(">" + escaped + "</text>"), std::string::npos) << escaped;
  }
  EXPECT_NE(text.find("viewBox=\"0 0 480 360\""), std::string::npos);
}

TEST_P(VectorFiles, PdfHasEmbeddedFonts) {
  const Bytes bytes = exported(L".pdf");
  const std::string text(bytes.begin(), bytes.end());
  EXPECT_EQ(text.substr(0, 5), "%PDF-");
  EXPECT_NE(text.find("/MediaBox [0 0 480 360]"), std::string::npos);
  EXPECT_NE(text.find("/FontFile2"), std::string::npos);
  EXPECT_NE(text.find("/ToUnicode"), std::string::npos);
}

Image played(HENHMETAFILE metafile) {
  Paper paper(kWidth, kHeight);
  const RECT place = {0, 0, kWidth, kHeight};
  EXPECT_TRUE(PlayEnhMetaFile(paper.dc(), metafile, &place));
  return paper.picture();
}

// GDI draws without soft edges.
constexpr double kHardEdges = 6;

TEST_P(VectorFiles, EmfShowsThePicture) {
  exported(L".emf");
  const HENHMETAFILE metafile = GetEnhMetaFileW(file(L".emf").c_str());
  ASSERT_TRUE(metafile);
  expectAlike(played(metafile), picture(), kHardEdges);
  DeleteEnhMetaFile(metafile);
}

TEST_P(VectorFiles, CopierGivesAMetafileToo) {
  ASSERT_EQ(callMethod(scene_->object(), L"Copier", {}).code(), S_OK);
  ASSERT_TRUE(OpenClipboard(nullptr));
  EXPECT_TRUE(GetClipboardData(CF_DIB));
  const auto metafile = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
  EXPECT_TRUE(metafile);
  const Image shown = played(metafile);
  CloseClipboard();
  expectAlike(shown, picture(), kHardEdges);
}

TEST_P(VectorFiles, ImprimerDrawsLinesNotPixels) {
  Paper paper(3 * kWidth, 3 * kHeight);
  ASSERT_EQ(callMethod(scene_->object(), L"Imprimer",
                       {handleOf(paper.dc()), 0L, 0L, 3L * kWidth, 3L * kHeight})
                .code(),
            S_OK);
  // Stretched pixels would be alike in threes.
  const Image& printed = paper.picture();
  int single = 0;
  for (int y = 1; y < printed.height(); y += 3) {
    for (int x = 1; x < printed.width(); x += 3) {
      single += printed.at(x, y) != printed.at(x - 1, y) ? 1 : 0;
    }
  }
  EXPECT_GT(single, 300);
  expectAlike(reduced(printed, 3), picture(), kHardEdges);
}

TEST_P(VectorFiles, ImprimerChangesNothingWhereStateCannotBeKept) {
  Paper paper(kWidth, kHeight);
  SetViewportOrgEx(paper.dc(), 3, 4, nullptr);
  FailingCalls calls;
  calls.fail(1, 0);
  const FailingImport saving(GetModuleHandleW(L"ZYNVue.dll"), "SaveDC", {}, calls);
  const auto print = [&] {
    return callMethod(scene_->object(), L"Imprimer",
                      {handleOf(paper.dc()), 0L, 0L, 1L * kWidth, 1L * kHeight});
  };
  ASSERT_EQ(print().code(), S_OK);
  calls.fail(calls.made);  // the last one, which is that of the paper
  const CallResult result = print();
  EXPECT_EQ(result.code(), E_FAIL);
  EXPECT_NE(result.description, L"");
  POINT origin = {};
  GetViewportOrgEx(paper.dc(), &origin);
  EXPECT_EQ(origin.x, 3);
  EXPECT_EQ(origin.y, 4);
}

TEST_P(VectorFiles, AnOlderFileStaysWhereADiskIsFull) {
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  for (const wchar_t* extension : {L".svg", L".pdf", L".emf"}) {
    const auto name = folder_.file(std::wstring(L"older") + extension);
    writeFile(name, "older");
    const FailingImport full(library, "WriteFile", {0, ERROR_DISK_FULL}, 1);
    const CallResult result = callMethod(scene_->object(), L"Exporter", {bstr(name)});
    EXPECT_EQ(result.code(), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
    EXPECT_NE(result.description.find(L"older"), std::wstring::npos);
    EXPECT_EQ(readFile(name), (Bytes{'o', 'l', 'd', 'e', 'r'}));
  }
}

// What rsvg-convert and pdftoppm have made of the files that the tests above have left.
TEST_P(VectorFiles, OthersShowThePicture) {
  if (!kept_ || !exists(file(L".svg.png"))) {
    GTEST_SKIP() << "tools/check_vectors.sh draws the files";
  }
  const Image expected = decodeImageFile(file(L".png")).image;
  expectAlike(decodeImageFile(file(L".svg.png")).image, expected, 3);
  expectAlike(decodeImageFile(file(L".pdf.png")).image, expected, 3);
  const Bytes words = readFile(file(L".pdf.txt"));
  // Between upright letters blanks are guessed.
  const std::string text = replaced(std::string(words.begin(), words.end()), " ", "");
  for (const std::wstring& word : scene_->words) {
    const std::string sought = replaced(utf8(word), " ", "");
    EXPECT_NE(text.find(sought), std::string::npos) << sought << " in\n" << text;
  }
}

INSTANTIATE_TEST_SUITE_P(All, VectorFiles, testing::ValuesIn(kScenes), [](const auto& chosen) {
  const std::wstring name = chosen.param.name;
  return std::string(name.begin(), name.end());
});

class VectorFilesOfNothing : public HostTest {};

TEST_F(VectorFilesOfNothing, AreUnexpected) {
  const auto context = createObject<IDispatch>(L"ZYNVue.ZYN2DGLBitmapContext");
  const Graph graph(context.Get());
  graph->put_Actif(VARIANT_TRUE);
  const TempFolder folder;
  const CallResult result = callMethod(context.Get(), L"Exporter", {bstr(folder.file(L"a.svg"))});
  EXPECT_EQ(result.code(), E_UNEXPECTED);
  EXPECT_FALSE(result.description.empty());
  EXPECT_TRUE(folder.empty());
}

class VectorFilesProgress : public HostTest, public testing::WithParamInterface<const wchar_t*> {
 protected:
  VectorFilesProgress() {
    fill(graph_);
    require(events_.attach(context_.dispatch()), "Vue");
  }

  HRESULT exportTo(const std::filesystem::path& file) {
    const ComPtr<IDispatch> called(context_.dispatch());
    return callMethod(called.Get(), L"Exporter", {bstr(file)}).code();
  }

  const TempFolder folder_;
  const std::filesystem::path file_ = folder_.file(GetParam());
  OffscreenGraph context_{kWidth, kHeight};
  Graph graph_{context_.dispatch()};
  HeardEvents events_;
  EventListener& listener_ = events_.listener();
};

TEST_P(VectorFilesProgress, IsToldAtTheBegin) {
  EXPECT_EQ(exportTo(file_), S_OK);
  EXPECT_EQ(listener_.parts, std::vector<double>{0});
  EXPECT_EQ(listener_.what, L"Exporter");
}

TEST_P(VectorFilesProgress, Stops) {
  writeFile(file_, "older");
  listener_.onEvent = stopWork;
  EXPECT_EQ(exportTo(file_), E_ABORT);
  EXPECT_EQ(readFile(file_), (Bytes{'o', 'l', 'd', 'e', 'r'}));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

TEST_P(VectorFilesProgress, HandlersMayDoWhatTheyLike) {
  const std::vector<std::function<void()>> actions = {
      [&] { graph_->RetirerTout(); }, [&] { fill(graph_); },
      [&] { EXPECT_EQ(exportTo(folder_.file(L"nested.svg")), S_OK); },
      [&] { context_.resize(200, 100); }, [&] { context_.release(); }};
  for (const auto& action : actions) {
    int calls = 0;
    listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
      if (++calls == 1) action();
      return E_FAIL;
    };
    EXPECT_EQ(exportTo(file_), S_OK);
    EXPECT_GE(calls, 1);
    EXPECT_FALSE(readFile(file_).empty());
    std::filesystem::remove(file_);
  }
}

INSTANTIATE_TEST_SUITE_P(All, VectorFilesProgress, testing::Values(L"a.svg", L"a.pdf", L"a.emf"),
                         [](const auto& chosen) {
                           const std::wstring name = std::wstring(chosen.param).substr(2);
                           return std::string(name.begin(), name.end());
                         });

}  // namespace
}  // namespace zyn::test
