#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "QAVFrmWindow.h"
#include "QAVMMColorProfile.h"
#include "QAVRbaImageServices.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

using ProfileRef = QAVRef<QAVMMColorProfile>;

ProfileRef Linear() {
  return ProfileRef::Adopt(
      QAVMMColorProfile::CreateRGB("Linear sRGB", QAVRGBChromaticities::SRGB(), 1.0));
}

std::vector<std::string> Installed() {
  QAVListValQAVUnicodeString paths{"stale entry"};
  QAVMMColorProfile::ListInstalledProfiles(paths);
  std::vector<std::string> out;
  for (const QAVUnicodeString& p : paths)
    out.push_back(p.str());
  return out;
}

class ColorProfileTest : public qavtest::HostTest {
 protected:
  // Writes a valid profile file and returns its path.
  std::string SaveProfile(const std::string& relative) {
    const fs::path file = _scratch.path() / relative;
    fs::create_directories(file.parent_path());
    EXPECT_EQ(Linear()->SaveToFile(QAVUnicodeString(file.string())), S_OK);
    return file.string();
  }
};

TEST_F(ColorProfileTest, ProfilesFromFilesBuiltInAndInvalid) {
  const ProfileRef srgb = ProfileRef::Adopt(QAVMMColorProfile::CreateSRGB());
  ASSERT_TRUE(srgb && srgb->exist());
  EXPECT_EQ(srgb->GetRefCount(), 1u);
  EXPECT_TRUE(srgb->GetPath().IsEmpty());
  EXPECT_FALSE(srgb->GetDescription().IsEmpty());

  // Saved and read back: the same profile content, its description and path.
  const std::string path = SaveProfile("linear.icc");
  const ProfileRef read = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(path.c_str()));
  ASSERT_TRUE(read && read->exist());
  EXPECT_EQ(read->GetPath().str(), path);
  EXPECT_EQ(read->GetDescription().str(), "Linear sRGB");
  EXPECT_TRUE(read->IsSameProfile(Linear().get()));
  EXPECT_FALSE(read->IsSameProfile(srgb.get()));
  EXPECT_FALSE(read->IsSameProfile(nullptr));

  // Nothing to read: no profile at all.
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile(""), nullptr);
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile((_scratch.str() + "/missing.icc").c_str()), nullptr);
  EXPECT_EQ(QAVMMColorProfile::CreateFromFile(_scratch.str().c_str()), nullptr);

  // A readable file that is no profile: an object that does not exist.
  for (const std::string& content : {std::string("not a profile"), std::string()}) {
    const fs::path junk = _scratch.Write("junk.icc", content);
    const ProfileRef bad = ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(junk.c_str()));
    ASSERT_TRUE(bad);
    EXPECT_FALSE(bad->exist());
    EXPECT_EQ(bad->GetHandle(), nullptr);
    EXPECT_FALSE(bad->IsSameProfile(bad.get()));
    EXPECT_EQ(bad->SaveToFile((_scratch.str() + "/copy.icc").c_str()), E_FAIL);
  }
  // A truncated profile is refused too.
  const std::string whole = qavtest::ReadFile(path);
  const fs::path cut = _scratch.Write("cut.icc", whole.substr(0, whole.size() / 2));
  EXPECT_FALSE(ProfileRef::Adopt(QAVMMColorProfile::CreateFromFile(cut.c_str()))->exist());

  EXPECT_EQ(QAVMMColorProfile::CreateRGB("x", QAVRGBChromaticities::SRGB(), 0.0), nullptr);
  EXPECT_EQ(srgb->SaveToFile((_scratch.str() + "/no/such/dir/x.icc").c_str()), E_FAIL);
}

TEST_F(ColorProfileTest, InstalledProfilesInDocumentedOrder) {
  // Only the directories given here are searched.
  qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", "");
  const std::string a = _scratch.str() + "/a";
  const std::string b = _scratch.str() + "/b";
  const std::string b1 = SaveProfile("b/zeta.icc");
  const std::string b2 = SaveProfile("b/Alpha.ICM");
  const std::string b3 = SaveProfile("b/sub/deep/x.icc");
  const std::string b4 = SaveProfile("b/m.icc");
  _scratch.Write("b/readme.txt", "not a profile");
  _scratch.Write("b/noext", "not a profile");
  fs::create_directories(_scratch.path() / "b/dir.icc");  // a directory, not a file
  const std::string a1 = SaveProfile("a/one.icm");
  fs::create_symlink(b1, _scratch.path() / "a/link-to-zeta.icc");

  {
    // b first, then a; the link in a reaches a file already listed.
    qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", b + ":" + a + "::" + _scratch.str() + "/none");
    EXPECT_EQ(Installed(), (std::vector<std::string>{b2, b4, b3, b1, a1}));
  }
  {
    // The same directory twice lists its files once.
    qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", a + ":" + a);
    EXPECT_EQ(Installed(), (std::vector<std::string>{_scratch.str() + "/a/link-to-zeta.icc", a1}));
  }
  {
    qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", std::nullopt);
    EXPECT_TRUE(Installed().empty());
  }
}

TEST_F(ColorProfileTest, SystemDirectoriesComeAfterTheUserPath) {
  const std::string mine = SaveProfile("mine/p.icc");
  const std::string local = SaveProfile("home/.local/share/icc/l.icc");
  const std::string color = SaveProfile("home/.color/icc/c.icc");
  qavtest::ScopedEnv home("HOME", _scratch.str() + "/home");
  qavtest::ScopedEnv icc("QAVHOST_ICC_PATH", _scratch.str() + "/mine");
  {
    // The default system directories; what the machine has in /usr/share comes
    // between the user's path and the home directories.
    qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", std::nullopt);
    const std::vector<std::string> all = Installed();
    ASSERT_GE(all.size(), 3u);
    EXPECT_EQ(all.front(), mine);
    EXPECT_EQ(all[all.size() - 2], local);
    EXPECT_EQ(all.back(), color);
  }
  {
    qavtest::ScopedEnv system("QAVHOST_ICC_SYSTEM_PATH", _scratch.str() + "/home/.color");
    EXPECT_EQ(Installed(), (std::vector<std::string>{mine, color}));
  }
}

TEST_F(ColorProfileTest, ScreenProfilesOfWindows) {
  EXPECT_EQ(QAVRbaImageServices::GetScreenProfile(0), nullptr);

  const auto window = QAVMakeRef<QAVFrmWindow>("w");
  const auto other = QAVMakeRef<QAVFrmWindow>("o");
  const ProfileRef srgb = ProfileRef::Adopt(QAVMMColorProfile::CreateSRGB());
  {
    const ProfileRef screen =
        ProfileRef::Adopt(QAVRbaImageServices::GetScreenProfile(window->GetNativeHandle()));
    ASSERT_TRUE(screen && screen->exist());
    EXPECT_TRUE(screen->IsSameProfile(srgb.get()));
  }

  const ProfileRef linear = Linear();
  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), linear.get());
  EXPECT_EQ(linear->GetRefCount(), 2u);  // ours and the window's
  {
    const ProfileRef screen =
        ProfileRef::Adopt(QAVRbaImageServices::GetScreenProfile(window->GetNativeHandle()));
    EXPECT_EQ(screen.get(), linear.get());
    EXPECT_EQ(linear->GetRefCount(), 3u);  // the caller got a reference of its own
    const ProfileRef unaffected =
        ProfileRef::Adopt(QAVRbaImageServices::GetScreenProfile(other->GetNativeHandle()));
    EXPECT_TRUE(unaffected->IsSameProfile(srgb.get()));
  }
  EXPECT_EQ(linear->GetRefCount(), 2u);

  QAVRbaImageServices::SetScreenProfile(window->GetNativeHandle(), nullptr);
  EXPECT_EQ(linear->GetRefCount(), 1u);
  const ProfileRef back =
      ProfileRef::Adopt(QAVRbaImageServices::GetScreenProfile(window->GetNativeHandle()));
  EXPECT_TRUE(back->IsSameProfile(srgb.get()));
}

}  // namespace
