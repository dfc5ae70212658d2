// Each call of the registry and of the type library's registration is made to fail in turn: the
// failure is answered, nothing is lost, and registering again afterwards makes everything right.
#include "support/FailingImport_win.h"
#include "support/ProcessUsage_win.h"
#include "support/RegistryTree_win.h"
#include "support/ServerModule_win.h"

namespace zyn::test {
namespace {

struct FailingCall {
  const char* function;
  Failure failure;
  HRESULT answer;
};

constexpr HRESULT kRefused = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
constexpr HRESULT kNoResource = HRESULT_FROM_WIN32(ERROR_RESOURCE_NAME_NOT_FOUND);
// A negative HRESULT as a function leaves it in its register.
constexpr Failure kNoTypes = {static_cast<std::uint32_t>(TYPE_E_REGISTRYACCESS), 0};

const FailingCall kAdding[] = {
    {"RegCreateKeyExW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegSetValueExW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegDeleteTreeW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegisterTypeLib", kNoTypes, TYPE_E_REGISTRYACCESS},
    {"FindResourceW", {0, ERROR_RESOURCE_NAME_NOT_FOUND}, kNoResource},
    {"LoadResource", {0, ERROR_RESOURCE_NAME_NOT_FOUND}, kNoResource},
};
const FailingCall kRemoving[] = {
    {"RegGetValueW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegOpenKeyExW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegDeleteTreeW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegDeleteValueW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegDeleteKeyW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"RegQueryInfoKeyW", {ERROR_ACCESS_DENIED, 0}, kRefused},
    {"UnRegisterTypeLib", kNoTypes, TYPE_E_REGISTRYACCESS},
    {"FindResourceW", {0, ERROR_RESOURCE_NAME_NOT_FOUND}, kNoResource},
    {"LoadResource", {0, ERROR_RESOURCE_NAME_NOT_FOUND}, kNoResource},
};
const FailingCall kAddingForUser = {"RegisterTypeLibForUser", kNoTypes, TYPE_E_REGISTRYACCESS};
const FailingCall kRemovingForUser = {"UnRegisterTypeLibForUser", kNoTypes, TYPE_E_REGISTRYACCESS};

class FailingRegistrationTest : public HostTest,
                                public testing::WithParamInterface<const wchar_t*> {
 protected:
  explicit FailingRegistrationTest(const wchar_t* commandLine = L"") : commandLine_(commandLine) {
    require(install(true), "DllInstall");
    registered_ = tree();
    require(install(false), "DllInstall");
    removed_ = tree();
  }

  /// Fails the first call of the function, the second one and so on, some of the later left out,
  /// until there is none left.
  void failEach(const FailingCall& call, bool add) {
    SCOPED_TRACE(call.function);
    std::uint32_t nth = 1;
    for (;; nth += 1 + nth / 2) {
      const FailingImport failing(module_.handle(), call.function, call.failure, nth, 1);
      const HRESULT answer = install(add);
      if (!failing.calls().hasFailed()) break;
      EXPECT_EQ(answer, call.answer) << "call " << nth;
    }
    EXPECT_GT(nth, 1U) << "nothing calls it";
    // The last pass had everything.
    EXPECT_TRUE(tree() == (add ? registered_ : removed_));
  }

  HRESULT install(bool add) {
    const RedirectedRoot user(HKEY_CURRENT_USER, user_.get());
    const RedirectedRoot root(HKEY_CLASSES_ROOT, classes_.get());
    return module_.install(add, commandLine_);
  }

  RegistryTree tree() {
    RegistryTree all = readTree(classes_.get());
    all.merge(readTree(user_.get()));
    return all;
  }

  ServerModule module_{GetParam()};
  ScratchKey classes_;
  ScratchKey user_;
  const wchar_t* commandLine_;
  RegistryTree registered_;
  RegistryTree removed_;
};

TEST_P(FailingRegistrationTest, AnswersTheFailureAndCanBeDoneAgain) {
  for (const FailingCall& call : kAdding) {
    failEach(call, true);
    require(install(false), "DllInstall");
  }
}

TEST_P(FailingRegistrationTest, RemovalAnswersTheFailureAndCanBeDoneAgain) {
  for (const FailingCall& call : kRemoving) {
    require(install(true), "DllInstall");
    failEach(call, false);
  }
}

TEST_P(FailingRegistrationTest, LosesNoHandle) {
  const auto cycle = [&] {
    for (const char* const function : {"RegSetValueExW", "RegisterTypeLib"}) {
      const FailingImport failing(module_.handle(), function, {ERROR_ACCESS_DENIED, 0});
      install(true);
    }
    install(false);
  };
  expectNoGrowth(10, 4, cycle);
}

class FailingUserRegistrationTest : public FailingRegistrationTest {
 protected:
  FailingUserRegistrationTest() : FailingRegistrationTest(L"user") {}
};

TEST_P(FailingUserRegistrationTest, AnswersTheFailureAndCanBeDoneAgain) {
  failEach(kAddingForUser, true);
  failEach(kRemovingForUser, false);
}

// The second call gives the root back, which cannot be answered any more.
TEST_P(FailingUserRegistrationTest, SaysThatTheUsersClassesAreOutOfReach) {
  for (const bool add : {true, false}) {
    {
      const FailingImport failing(module_.handle(), "RegOverridePredefKey",
                                  {ERROR_ACCESS_DENIED, 0}, 1, 1);
      EXPECT_EQ(install(add), kRefused);
    }
    EXPECT_EQ(install(add), S_OK);
    EXPECT_TRUE(tree() == (add ? registered_ : removed_));
  }
}

constexpr const wchar_t* kModules[] = {L"ZYNVue.dll", L"ZYNModeleGeom.dll"};
std::string nameOf(const testing::TestParamInfo<const wchar_t*>& chosen) {
  return chosen.index == 0 ? "ZYNVue" : "ZYNModeleGeom";
}
INSTANTIATE_TEST_SUITE_P(Modules, FailingRegistrationTest, testing::ValuesIn(kModules), nameOf);
INSTANTIATE_TEST_SUITE_P(Modules, FailingUserRegistrationTest, testing::ValuesIn(kModules), nameOf);

}  // namespace
}  // namespace zyn::test
