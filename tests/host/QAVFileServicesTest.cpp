#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include "QAVFileServices.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaImageServices.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

// Every entry of a directory through the host's reader, sorted.
std::vector<std::string> ReadAll(const QAVUnicodeString& path, HRESULT& openResult) {
  std::vector<std::string> names;
  QAVDirectory* dir = nullptr;
  openResult = QAVOpenDirectory(path, dir);
  if (FAILED(openResult)) return names;
  QAVUnicodeString name;
  HRESULT hr = S_OK;
  while ((hr = QAVReadDirectory(dir, name)) == S_OK)
    names.push_back(name.str());
  EXPECT_EQ(hr, S_FALSE);  // a full read ends with the end, not an error
  QAVCloseDirectory(dir);
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> Items(const QAVListValQAVUnicodeString& list) {
  std::vector<std::string> items;
  for (const QAVUnicodeString& s : list)
    items.push_back(s.str());
  return items;
}

}  // namespace

TEST(QAVFileServices, MakePathJoinsWithOneSeparator) {
  EXPECT_EQ(QAVMakePath("/data", "sky.hdr"), QAVUnicodeString("/data/sky.hdr"));
  EXPECT_EQ(QAVMakePath("/data/", "sky.hdr"), QAVUnicodeString("/data/sky.hdr"));
  EXPECT_EQ(QAVMakePath("", "sky.hdr"), QAVUnicodeString("sky.hdr"));
  EXPECT_EQ(QAVMakePath("a//", "b"), QAVUnicodeString("a//b"));  // not normalised
  EXPECT_EQ(QAVMakePath("dir", ""), QAVUnicodeString("dir/"));
}

TEST(QAVFileServices, OddNamesWorkEverywhere) {
  qavtest::ScratchDir scratch;
  const std::string spaced = "with some spaces.jpg";
  const std::string utf8 = "\xc3\xa9t\xc3\xa9 \xe5\x9c\x96.hdr";  // "été 圖.hdr"
  const std::string longest(255, 'n');
  scratch.Write(spaced, "12345");
  scratch.Write(utf8, "x");
  scratch.Write(longest, "");
  fs::create_directory(scratch.path() / "sub dir \xc3\xa9");

  HRESULT openResult = E_FAIL;
  const std::vector<std::string> names = ReadAll(QAVUnicodeString(scratch.str()), openResult);
  ASSERT_EQ(openResult, S_OK);
  std::vector<std::string> expected = {".", "..", longest, "sub dir \xc3\xa9", utf8, spaced};
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(names, expected);

  const QAVUnicodeString dir(scratch.str());
  QAVStatInfo info;
  ASSERT_EQ(QAVGetFileInfo(QAVMakePath(dir, QAVUnicodeString(spaced)), info), S_OK);
  EXPECT_EQ(info.mode & QAV_S_IFMT, QAV_S_IFREG);
  EXPECT_EQ(info.size, 5);
  ASSERT_EQ(QAVGetFileInfo(QAVMakePath(dir, "sub dir \xc3\xa9"), info), S_OK);
  EXPECT_EQ(info.mode & QAV_S_IFMT, QAV_S_IFDIR);
  EXPECT_EQ(QAVGetFileInfo(QAVMakePath(dir, QAVUnicodeString(longest)), info), S_OK);
  EXPECT_EQ(_QAVFileAccess(QAVMakePath(dir, QAVUnicodeString(utf8)), 0, 0), 0);
  EXPECT_EQ(_QAVFileAccess(QAVMakePath(dir, QAVUnicodeString(longest)), QAV_ACCESS_READ, 0), 0);
  // 256 bytes is over the limit of a name: a plain failure.
  EXPECT_EQ(_QAVFileAccess(QAVMakePath(dir, QAVUnicodeString(std::string(256, 'n'))), 0, 0), -1);
}

TEST(QAVFileServices, MissingAndOddPathsFailCleanly) {
  qavtest::ScratchDir scratch;
  const QAVUnicodeString missing(scratch.str() + "/missing");
  QAVStatInfo info;
  info.mode = 0x1234;
  EXPECT_EQ(QAVGetFileInfo(missing, info), E_FAIL);
  EXPECT_EQ(info.mode, 0x1234u);  // untouched
  EXPECT_EQ(QAVGetFileInfo("", info), E_FAIL);
  EXPECT_EQ(QAVGetFileInfo(QAVUnicodeString(std::string("/tmp\0x", 6)), info), E_FAIL);
  EXPECT_EQ(QAVGetFileInfo(QAVUnicodeString(std::string(5000, 'a')), info), E_FAIL);
  EXPECT_EQ(_QAVFileAccess(missing, 0, 0), -1);
  EXPECT_EQ(_QAVFileAccess("", 0, 0), -1);

  QAVDirectory* dir = reinterpret_cast<QAVDirectory*>(&info);  // must be replaced
  EXPECT_EQ(QAVOpenDirectory(missing, dir), E_FAIL);
  EXPECT_EQ(dir, nullptr);
  // A file is not a directory.
  const fs::path file = scratch.Write("plain.txt", "x");
  EXPECT_EQ(QAVOpenDirectory(QAVUnicodeString(file.string()), dir), E_FAIL);
  QAVUnicodeString name("kept");
  EXPECT_EQ(QAVReadDirectory(nullptr, name), E_FAIL);
  EXPECT_EQ(name, QAVUnicodeString("kept"));
  QAVCloseDirectory(nullptr);
}

TEST(QAVFileServices, AccessModesFollowPermissions) {
  qavtest::ScratchDir scratch;
  const fs::path file = scratch.Write("readonly.txt", "x");
  ::chmod(file.c_str(), 0444);
  const QAVUnicodeString path(file.string());
  QAVStatInfo info;
  ASSERT_EQ(QAVGetFileInfo(path, info), S_OK);
  EXPECT_EQ(info.mode, QAV_S_IFREG | 0444u);
  EXPECT_EQ(_QAVFileAccess(path, QAV_ACCESS_EXISTS, 0), 0);
  EXPECT_EQ(_QAVFileAccess(path, QAV_ACCESS_READ, 0), 0);

  if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
  EXPECT_EQ(_QAVFileAccess(path, QAV_ACCESS_WRITE, 0), -1);

  // An unreadable directory cannot be listed.
  const fs::path locked = scratch.path() / "locked";
  fs::create_directory(locked);
  ::chmod(locked.c_str(), 0);
  QAVDirectory* dir = nullptr;
  EXPECT_EQ(QAVOpenDirectory(QAVUnicodeString(locked.string()), dir), E_FAIL);
  ::chmod(locked.c_str(), 0700);
}

TEST(QAVFileServices, MkdirCreatesParentsAndRefusesFiles) {
  qavtest::ScratchDir scratch;
  const std::string deep = scratch.str() + "/a b//\xc3\xa9/c";
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(deep)), S_OK);
  EXPECT_TRUE(fs::is_directory(deep));
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(deep + "/")), S_OK);  // already there
  scratch.Write("file", "x");
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(scratch.str() + "/file")), E_FAIL);
  EXPECT_EQ(QAVMkdir(QAVUnicodeString(scratch.str() + "/file/below")), E_FAIL);
  EXPECT_EQ(QAVMkdir(""), E_FAIL);
}

TEST(QAVFileServices, TempDirectoryComesFromTheEnvironment) {
  {
    qavtest::ScopedEnv tmp("TMPDIR", "/var/tmp/qav//");
    EXPECT_EQ(QAVGetTempDirectory(), QAVUnicodeString("/var/tmp/qav"));
  }
  {
    qavtest::ScopedEnv tmp("TMPDIR", "");
    EXPECT_EQ(QAVGetTempDirectory(), QAVUnicodeString("/tmp"));
  }
  qavtest::ScopedEnv tmp("TMPDIR", std::nullopt);
  EXPECT_EQ(QAVGetTempDirectory(), QAVUnicodeString("/tmp"));
}

TEST(QAVFileServices, PathListsSplitOnColonsDroppingEmptyEntries) {
  QAVListValQAVUnicodeString list;
  QAVRbaImageServices::ExtractPathList("/a:/b c:/\xc3\xa9", list);
  EXPECT_EQ(Items(list), (std::vector<std::string>{"/a", "/b c", "/\xc3\xa9"}));
  QAVRbaImageServices::ExtractPathList(":/a::/b:", list);  // the list is replaced
  EXPECT_EQ(Items(list), (std::vector<std::string>{"/a", "/b"}));
  QAVRbaImageServices::ExtractPathList("/a:/a", list);
  EXPECT_EQ(list.Size(), 2);
  QAVRbaImageServices::ExtractPathList(":::", list);
  EXPECT_EQ(list.Size(), 0);
  list.Append("x");
  QAVRbaImageServices::ExtractPathList(nullptr, list);
  EXPECT_EQ(list.Size(), 0);
}

TEST(QAVFileServices, ListIsOneBased) {
  QAVListValQAVUnicodeString list{"first", "second"};
  list.Append("third");
  ASSERT_EQ(list.Size(), 3);
  EXPECT_EQ(list[1], QAVUnicodeString("first"));
  EXPECT_EQ(list[3], QAVUnicodeString("third"));
  EXPECT_TRUE(list[0].IsEmpty());
  EXPECT_TRUE(list[4].IsEmpty());
  EXPECT_EQ(list.Locate("second"), 2);
  EXPECT_EQ(list.Locate("none"), 0);
}

TEST(QAVFileServices, SplitPathAtTheLastDotOfTheName) {
  struct Case {
    const char* name;
    const char* base;
    const char* extension;
  };
  const Case cases[] = {
      {"sky.HDR", "sky", "HDR"},
      {"a.b.hdr", "a.b", "hdr"},
      {"sky", "sky", ""},
      {"sky.", "sky", ""},
      {".hdr", ".hdr", ""},
      {"dir.d/sky", "dir.d/sky", ""},
      {"dir.d\\sky.png", "dir.d\\sky", "png"},
      {"/x/.hidden.jpg", "/x/.hidden", "jpg"},
      {"", "", ""},
      {"\xc3\xa9t\xc3\xa9.exr", "\xc3\xa9t\xc3\xa9", "exr"},
  };
  for (const Case& c : cases) {
    QAVUnicodeString base("old"), extension("old");
    QAVRbaImageServices::SplitPath(c.name, base, extension);
    EXPECT_EQ(base, QAVUnicodeString(c.base)) << c.name;
    EXPECT_EQ(extension, QAVUnicodeString(c.extension)) << c.name;
  }
}
