// Several apartments at work in one process, and calls that cross from one to another.
#include <atomic>
#include <thread>

#include "support/ForeignObject_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 8;

/// Makes the process's first window. Wine 8 locks up when that happens in one thread while another
/// loads a library that registers window classes as it starts, such as the common controls.
void useWindowsOnce() {
  static const bool used = DestroyWindow(
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
  if (!used) throw std::runtime_error("no window");
}

/// Runs the same work in several apartments at once; what one of them throws fails the test.
template <class Work>
void inApartments(int count, Work work) {
  useWindowsOnce();
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([i, &work] {
      try {
        Apartment apartment;
        work(i);
      } catch (const std::exception& error) {
        ADD_FAILURE() << "thread " << i << ": " << error.what();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(ThreadsTest, ContextsAndTrianglesComeAndGoInSeveralApartments) {
  const Rgb colours[kThreads] = {kRed, kGreen, kBlue, kYellow};
  std::atomic<int> pictures = 0;
  inApartments(kThreads, [&](int i) {
    for (int round = 0; round < kRounds; ++round) {
      OffscreenScene scene(20 + i, 30);
      scene.addAll(makeRectangle(0, 1, 0, 1, 0, colours[i]));
      EXPECT_EQ(scene.render().count(colours[i]), (20 + i) * (20 + i)) << i << ' ' << round;
      ++pictures;
    }
  });
  EXPECT_EQ(pictures, kThreads * kRounds);
}

TEST(ThreadsTest, EveryFormatIsWrittenBySeveralThreadsAtOnce) {
  inApartments(kThreads, [](int) {
    OffscreenScene scene(40, 30);
    scene.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    for (int round = 0; round < 4; ++round) {
      const auto& folder = scene.folder();
      EXPECT_EQ(scene->CreatePNG(nullptr, bstr(folder.file(L"a.png"))), S_OK);
      EXPECT_EQ(scene->CreateGIF(nullptr, bstr(folder.file(L"a.gif"))), S_OK);
      EXPECT_EQ(scene->CreateJPG(nullptr, bstr(folder.file(L"a.jpg")), 80), S_OK);
      EXPECT_EQ(readFile(folder.file(L"a.png")).at(1), 'P');
      EXPECT_EQ(readFile(folder.file(L"a.gif")).at(0), 'G');
      EXPECT_EQ(readFile(folder.file(L"a.jpg")).at(0), 0xFF);
    }
  });
}

TEST(ThreadsTest, ManyTrianglesAreMadeAndReleasedAtOnce) {
  inApartments(kThreads, [](int i) {
    std::vector<ComPtr<IZYNGLTriangle>> triangles;
    for (int n = 0; n < 500; ++n) {
      triangles.push_back(makeTriangle({0.0 + i, 0, 0}, {1, 0, 0}, {0, 1, 0}));
      if (n % 3 == 0) triangles.front().Swap(triangles.back());
      if (n % 5 == 0) triangles.pop_back();
    }
    double x = -1;
    double y = 0;
    double z = 0;
    EXPECT_EQ(triangles.back()->getPoint(0, &x, &y, &z), S_OK);
    EXPECT_EQ(x, i);
  });
}

// --- across apartments ---------------------------------------------------------------------------

/// An interface on its way to another apartment.
template <class Interface>
class Parcel {
 public:
  explicit Parcel(Interface* object) {
    require(CoMarshalInterThreadInterfaceInStream(__uuidof(Interface), object, &stream_),
            "marshalling");
  }
  ComPtr<Interface> open() {
    ComPtr<Interface> object;
    require(CoGetInterfaceAndReleaseStream(stream_.Detach(), __uuidof(Interface),
                                           reinterpret_cast<void**>(object.GetAddressOf())),
            "unmarshalling");
    return object;
  }

 private:
  ComPtr<IStream> stream_;
};

/// Runs work in an apartment of its own while this thread serves the calls that come from it.
template <class Work>
void serveWhile(Work work) {
  std::atomic<bool> done = false;
  const DWORD server = GetCurrentThreadId();
  std::thread client([&] {
    try {
      Apartment apartment;
      work();
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    done = true;
    PostThreadMessageW(server, WM_NULL, 0, 0);
  });
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  while (!done) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  client.join();
}

class MarshallingTest : public HostTest {};

TEST_F(MarshallingTest, TriangleAnswersAcrossApartments) {
  auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  Parcel<IZYNGLTriangle> parcel(triangle.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    EXPECT_NE(proxy.Get(), triangle.Get());
    EXPECT_EQ(proxy->setPoint(1, 1.5, -2, 3), S_OK);
    double x = 0;
    double y = 0;
    double z = 0;
    EXPECT_EQ(proxy->getPoint(1, &x, &y, &z), S_OK);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2);
    EXPECT_EQ(z, 3);
    EXPECT_EQ(proxy->put_Priority(25), S_OK);
    long priority = 0;
    EXPECT_EQ(proxy->get_Priority(&priority), S_OK);
    EXPECT_EQ(priority, 19);
    EXPECT_EQ(proxy->setPoint(3, 0, 0, 0), E_FAIL);
    EXPECT_EQ(callMethod(proxy.Get(), L"setColor", {1.0, 0.0, 0.0, 1.0}).code(), S_OK);
  });
  double x = 0;
  double y = 0;
  double z = 0;
  triangle->getPoint(1, &x, &y, &z);
  EXPECT_EQ(x, 1.5);
}

TEST_F(MarshallingTest, ContextWorksAcrossApartments) {
  TempFolder folder;
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  Parcel<IZYN3DGLBitmapContext> parcel(context.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    long made = 0;
    EXPECT_EQ(proxy->put_BackColor(colourArray(kGreen)), S_OK);
    EXPECT_EQ(proxy->CreateContext(16, 8, &made), S_OK);
    EXPECT_EQ(made, 1);
    _variant_t light;
    EXPECT_EQ(proxy->get_DirectionLight1Property(&light), S_OK);
    EXPECT_EQ(doublesIn(light).size(), 9u);
    EXPECT_EQ(proxy->CreateBitmap(bstr(folder.file(L"a.bmp"))), S_OK);
  });
  EXPECT_EQ(decodeBmp(readFile(folder.file(L"a.bmp"))).count(kGreen), 16 * 8);
}

TEST_F(MarshallingTest, DrawingReachesAnObjectThroughItsProxy) {
  auto triangle = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  auto draw = queryFor<IGLDraw>(triangle.Get());
  Parcel<IGLDraw> parcel(draw.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    double parameter = 0;
    EXPECT_EQ(proxy->GetParam(nullptr, &parameter), S_OK);
    EXPECT_EQ(parameter, -1);
    ComPtr<IDispatch> box;
    EXPECT_EQ(proxy->GetBox3D(&box), S_OK);
    double xMax = 0;
    EXPECT_EQ(queryFor<IZYNBox3D>(box.Get())->get_XMax(&xMax), S_OK);
    EXPECT_EQ(xMax, 1);
  });
}

}  // namespace
}  // namespace zyn::test
