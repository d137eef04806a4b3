// Packaged content files: what the writer makes reads back, and every kind of
// damaged or hostile archive is refused with the package and the reason named.
#include <gtest/gtest.h>
#include <zip.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "QAVContentPackage.h"
#include "QAVTestSupport.h"

namespace fs = std::filesystem;

namespace {

struct Entry {
  std::string name;
  std::string content;
  bool stored = false;  // kept uncompressed, so the test can find its bytes
};

// Writes a zip archive holding `entries`, and a folder entry ("name/") for
// each of `folders`; false when libzip cannot.
bool WriteZip(const fs::path& path, const std::vector<Entry>& entries,
              const std::vector<std::string>& folders = {}) {
  int code = 0;
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
  if (!archive) return false;
  for (const std::string& folder : folders) {
    if (zip_dir_add(archive, folder.c_str(), ZIP_FL_ENC_UTF_8) < 0) {
      zip_discard(archive);
      return false;
    }
  }
  for (const Entry& entry : entries) {
    zip_source_t* source =
        zip_source_buffer(archive, entry.content.data(), entry.content.size(), 0);
    const zip_int64_t index =
        source ? zip_file_add(archive, entry.name.c_str(), source, ZIP_FL_ENC_GUESS) : -1;
    if (index < 0) {
      if (source) zip_source_free(source);
      zip_discard(archive);
      return false;
    }
    if (entry.stored)
      zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
  }
  return zip_close(archive) == 0;
}

void WriteBytes(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// Replaces every occurrence of `from` by `to` (same length) in the file.
int Patch(const fs::path& path, const std::string& from, const std::string& to) {
  std::string bytes = qavtest::ReadFile(path);
  int count = 0;
  for (std::size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + 1)) {
    bytes.replace(at, from.size(), to);
    ++count;
  }
  WriteBytes(path, bytes);
  return count;
}

const char* const kManifest = R"({"format":"orlix","version":1,"kind":"Material",
  "title":"Metals","objects":[
   {"id":"steel","type":"Material","name":"Brushed steel","files":["steel/albedo.png",
    "steel/rough.png"],"attributes":{"Maturity":"SHARED","Finish":"Brushed"}},
   {"id":"gold","type":"Material","name":"Gold"}]})";

std::vector<Entry> GoodEntries() {
  return {{"manifest.json", kManifest},
          {"steel/albedo.png", std::string(3000, 'a') + "albedo"},
          {"steel/rough.png", "rough"}};
}

class ContentPackageTest : public ::testing::Test {
 protected:
  // Opens `entries` written as an archive and returns the refusal's message
  // (empty when the package was accepted).
  std::string Refusal(const std::vector<Entry>& entries,
                      const QAVContentPackage::Limits& limits = {}) {
    const fs::path path = _scratch.path() / "case.orlix";
    EXPECT_TRUE(WriteZip(path, entries));
    return RefusalOf(path, limits);
  }
  std::string RefusalOf(const fs::path& path, const QAVContentPackage::Limits& limits = {}) {
    QAVContentPackage package;
    std::string error;
    const HRESULT hr = package.Open(path.string(), limits, error);
    if (SUCCEEDED(hr)) return {};
    EXPECT_EQ(hr, E_FAIL);
    EXPECT_TRUE(package.GetObjects().empty());
    EXPECT_EQ(error.rfind(path.string() + ": ", 0), 0u) << error;
    return error.empty() ? "(no message)" : error;
  }
  static std::vector<Entry> WithManifest(const std::string& manifest) {
    std::vector<Entry> entries = GoodEntries();
    entries[0].content = manifest;
    return entries;
  }

  qavtest::ScratchDir _scratch;
};

TEST_F(ContentPackageTest, PackThenOpenGivesTheFolderBack) {
  const fs::path out = _scratch.path() / "out" / "metals.orlix";
  fs::create_directories(out.parent_path());
  for (const Entry& entry : GoodEntries())
    _scratch.Write("src/" + entry.name, entry.content);
  _scratch.Write("src/unlisted.txt", "left out");
  std::string error;
  ASSERT_EQ(QAVContentPackage::Pack((_scratch.path() / "src").string(), out.string(), error), S_OK)
      << error;

  QAVContentPackage package;
  ASSERT_EQ(package.Open(out.string(), error), S_OK) << error;
  EXPECT_EQ(package.GetKind(), "Material");
  EXPECT_EQ(package.GetTitle(), "Metals");
  ASSERT_EQ(package.GetObjects().size(), 2u);
  const QAVContentPackage::Object& steel = package.GetObjects()[0];
  EXPECT_EQ(steel.id, "steel");
  EXPECT_EQ(steel.name, "Brushed steel");
  EXPECT_EQ(steel.files, (std::vector<std::string>{"steel/albedo.png", "steel/rough.png"}));
  using Pairs = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(steel.attributes, (Pairs{{"Finish", "Brushed"}, {"Maturity", "SHARED"}}));
  EXPECT_TRUE(package.GetObjects()[1].files.empty());
  ASSERT_NE(package.GetFile("steel/albedo.png"), nullptr);
  EXPECT_EQ(*package.GetFile("steel/albedo.png"), GoodEntries()[1].content);
  EXPECT_EQ(package.GetFile("unlisted.txt"), nullptr);
  EXPECT_EQ(package.GetArchiveSize(), fs::file_size(out));
  EXPECT_EQ(package.GetInflatedSize(), GoodEntries()[0].content.size() + 3006 + 5);
  // The unlisted file stayed out of the archive, and the archive is smaller
  // than what it holds.
  EXPECT_LT(package.GetArchiveSize(), package.GetInflatedSize());

  // A manifest listing a file the folder lacks, or a folder instead of a file,
  // is refused and leaves the previous archive in place.
  const std::string before = qavtest::ReadFile(out);
  fs::remove(_scratch.path() / "src/steel/rough.png");
  EXPECT_EQ(QAVContentPackage::Pack((_scratch.path() / "src").string(), out.string(), error),
            E_FAIL);
  EXPECT_NE(error.find("'steel/rough.png', which is not a regular file"), std::string::npos)
      << error;
  fs::create_directories(_scratch.path() / "src/steel/rough.png");
  EXPECT_EQ(QAVContentPackage::Pack((_scratch.path() / "src").string(), out.string(), error),
            E_FAIL);
  _scratch.Write("src/manifest.json", R"({"format":"orlix","version":2})");
  EXPECT_EQ(QAVContentPackage::Pack((_scratch.path() / "src").string(), out.string(), error),
            E_FAIL);
  EXPECT_NE(error.find("version 2 is not supported"), std::string::npos) << error;
  EXPECT_EQ(QAVContentPackage::Pack((_scratch.path() / "none").string(), out.string(), error),
            E_FAIL);
  EXPECT_EQ(qavtest::ReadFile(out), before);
}

TEST_F(ContentPackageTest, AFileListedByTwoObjectsKeepsItsContent) {
  const fs::path path = _scratch.path() / "shared.orlix";
  ASSERT_TRUE(WriteZip(path, {{"manifest.json", R"({"format":"orlix","version":1,
    "kind":"Material","title":"Shared","objects":[
    {"id":"a","type":"Material","name":"A","files":["common/grain.png"]},
    {"id":"b","type":"Material","name":"B","files":["common/grain.png"]}]})"},
                              {"common/grain.png", "grain bytes"}}));
  QAVContentPackage package;
  std::string error;
  ASSERT_EQ(package.Open(path.string(), error), S_OK) << error;
  ASSERT_NE(package.GetFile("common/grain.png"), nullptr);
  EXPECT_EQ(*package.GetFile("common/grain.png"), "grain bytes");
}

TEST_F(ContentPackageTest, DamagedArchivesAreRefused) {
  const fs::path path = _scratch.path() / "damaged.orlix";
  EXPECT_NE(RefusalOf(_scratch.path() / "missing.orlix")
                .find("cannot be read: No such file or directory"),
            std::string::npos);
  WriteBytes(path, "just some text, not an archive at all");
  EXPECT_NE(RefusalOf(path).find("not a zip archive"), std::string::npos);
  WriteBytes(path, "");
  EXPECT_NE(RefusalOf(path).find("not a zip archive"), std::string::npos);

  // Cut short: the central directory is gone, or half of an entry's data.
  std::vector<Entry> entries = GoodEntries();
  entries[1].stored = true;
  ASSERT_TRUE(WriteZip(path, entries));
  const std::string whole = qavtest::ReadFile(path);
  WriteBytes(path, whole.substr(0, whole.size() - 30));
  EXPECT_FALSE(RefusalOf(path).empty());
  WriteBytes(path, whole.substr(0, whole.size() / 2));
  EXPECT_FALSE(RefusalOf(path).empty());

  // One byte of a stored entry changed: its checksum no longer matches.
  WriteBytes(path, whole);
  EXPECT_EQ(RefusalOf(path), "");
  ASSERT_EQ(Patch(path, "aaaaalbedo", "aaaaXlbedo"), 1);
  EXPECT_NE(RefusalOf(path).find("'steel/albedo.png' fails its checksum"), std::string::npos)
      << RefusalOf(path);
}

TEST_F(ContentPackageTest, AListedFileTheArchiveHoldsAsAFolderIsRefused) {
  // The manifest lists "steel/rough.png", which the archive holds only as the
  // folder entry "steel/rough.png/": there is no such file to import.
  std::vector<Entry> entries = GoodEntries();
  entries.pop_back();
  const fs::path path = _scratch.path() / "lying.orlix";
  ASSERT_TRUE(WriteZip(path, entries, {"steel/rough.png"}));
  EXPECT_NE(RefusalOf(path).find(
                "object 'steel' lists 'steel/rough.png', which the archive holds as a folder"),
            std::string::npos)
      << RefusalOf(path);
  // Folder entries that no object lists are harmless.
  ASSERT_TRUE(WriteZip(path, GoodEntries(), {"steel", "empty"}));
  EXPECT_EQ(RefusalOf(path), "");
}

TEST_F(ContentPackageTest, OnlyARegularFileIsRead) {
  fs::create_directories(_scratch.path() / "folder.orlix");
  EXPECT_EQ(RefusalOf(_scratch.path() / "folder.orlix"),
            (_scratch.path() / "folder.orlix").string() + ": is a folder, not a package");
  const fs::path empty = _scratch.Write("empty.orlix", "");
  EXPECT_EQ(RefusalOf(empty), empty.string() + ": not a zip archive (the file is empty)");
  // Packing: the folder must be one, and the output may not be a folder.
  const fs::path out = _scratch.path() / "out.orlix";
  std::string error;
  EXPECT_EQ(QAVContentPackage::Pack(empty.string(), out.string(), error), E_FAIL);
  EXPECT_EQ(error, empty.string() + ": is not a folder");
  for (const Entry& entry : GoodEntries())
    _scratch.Write("src/" + entry.name, entry.content);
  const std::string src = (_scratch.path() / "src").string();
  EXPECT_EQ(QAVContentPackage::Pack(src, (_scratch.path() / "folder.orlix").string(), error),
            E_FAIL);
  EXPECT_EQ(error, src + ": cannot write " + (_scratch.path() / "folder.orlix").string() +
                       ": it is a folder");
  EXPECT_FALSE(fs::exists(out));
}

TEST_F(ContentPackageTest, BadManifestsAreRefused) {
  std::vector<Entry> entries = GoodEntries();
  entries.erase(entries.begin());
  EXPECT_NE(Refusal(entries).find("no manifest.json"), std::string::npos);
  entries = GoodEntries();
  entries[0].name = "sub/manifest.json";
  EXPECT_NE(Refusal(entries).find("no manifest.json"), std::string::npos);

  const std::vector<std::pair<std::string, std::string>> cases{
      {R"({"format":"orlix",)", "not valid JSON"},
      {R"([1,2])", "not a JSON object"},
      {R"({"version":1,"kind":"Material","title":"t","objects":[]})", "\"format\" is missing"},
      {R"({"format":"zip","version":1,"kind":"Material","title":"t","objects":[]})",
       "'zip', not 'orlix'"},
      {R"({"format":"orlix","version":"1","kind":"Material","title":"t","objects":[]})",
       "\"version\" must be an integer"},
      {R"({"format":"orlix","version":1,"kind":"Car","title":"t","objects":[]})",
       "unknown kind 'Car'"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":7,"objects":[]})",
       "\"title\" must be a text"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":{}})",
       "\"objects\" must be an array"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[3]})",
       "objects[0] must be an object"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":5,"type":"P","name":"n"}]})",
       "objects[0].\"id\" must be a text"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"","type":"P","name":"n"}]})",
       "objects[0].\"id\" is empty"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","name":"n"}]})",
       "objects[0].\"type\" is missing"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n"},{"id":"a","type":"P","name":"m"}]})",
       "the object id 'a' is given twice"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","files":"x.png"}]})",
       "\"files\" must be an array"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","files":[1]}]})",
       "\"files\" must hold texts"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","attributes":{"Mass":3}}]})",
       "attributes.Mass must be a text"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","files":["missing.png"]}]})",
       "object 'a' lists 'missing.png', which is not in the archive"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","files":["steel/rough.png","steel/rough.png"]}]})",
       "lists 'steel/rough.png' twice"},
      {R"({"format":"orlix","version":1,"kind":"Props","title":"t","objects":[
        {"id":"a","type":"P","name":"n","files":["../steel/rough.png"]}]})",
       "not a plain relative name"},
  };
  for (const auto& [manifest, reason] : cases) {
    const std::string refusal = Refusal(WithManifest(manifest));
    EXPECT_NE(refusal.find(reason), std::string::npos) << manifest << "\n-> " << refusal;
  }
  // No objects at all is a valid package.
  EXPECT_EQ(Refusal(WithManifest(
                R"({"format":"orlix","version":1,"kind":"Human","title":"t","objects":[]})")),
            "");
}

TEST_F(ContentPackageTest, UnsafeEntryNamesAreRefused) {
  for (const char* name : {"a", "a/b.png", "a..b/c", ".hidden", "x/y/z.txt"})
    EXPECT_TRUE(QAVContentPackage::IsValidEntryName(name)) << name;
  for (const std::string& name :
       std::vector<std::string>{"", "/etc/passwd", "../up", "a/../b", "a/./b", "a//b", "a\\b",
                                std::string("a\0b", 3), "a/"})
    EXPECT_FALSE(QAVContentPackage::IsValidEntryName(name)) << name;

  for (const char* name : {"/abs.txt", "../escape.txt", "dir/../../x.txt", "win\\path.txt"}) {
    std::vector<Entry> entries = GoodEntries();
    entries.push_back({name, "evil"});
    EXPECT_NE(Refusal(entries).find("is not allowed"), std::string::npos) << name;
  }
  // A NUL inside a name: the archive is written with a placeholder, then the
  // placeholder's byte becomes NUL in both headers.
  std::vector<Entry> entries = GoodEntries();
  entries.push_back({"evilQname.txt", "evil"});
  const fs::path path = _scratch.path() / "nul.orlix";
  ASSERT_TRUE(WriteZip(path, entries));
  ASSERT_EQ(Patch(path, "evilQname", std::string("evil\0name", 9)), 2);
  EXPECT_NE(RefusalOf(path).find("NUL"), std::string::npos) << RefusalOf(path);
}

TEST_F(ContentPackageTest, InflationBeyondTheLimitsIsRefused) {
  // 8 MiB of zeros deflate to a few kilobytes: far beyond 200 times the size.
  std::vector<Entry> entries = GoodEntries();
  entries.push_back({"zeros.bin", std::string(8u << 20, '\0')});
  const std::string refusal = Refusal(entries);
  EXPECT_NE(refusal.find("decompression bomb"), std::string::npos) << refusal;

  // The cap on the total holds for data that does not compress at all.
  std::string noise;
  std::uint32_t state = 12345;
  for (int i = 0; i < 4000; ++i) {
    state = state * 1664525u + 1013904223u;
    noise += static_cast<char>(state >> 24);
  }
  entries = GoodEntries();
  entries.push_back({"noise.bin", noise});
  QAVContentPackage::Limits limits;
  limits.maxTotalBytes = 4000;
  EXPECT_NE(Refusal(entries, limits).find("inflates to more than 4000 bytes"), std::string::npos);
  limits.maxTotalBytes = 4000 + 3011 + GoodEntries()[0].content.size();
  EXPECT_EQ(Refusal(entries, limits), "");
  // Below the allowance, a high ratio is fine: small packages of plain text.
  limits = {};
  limits.ratio = 1;
  limits.allowance = 64u << 10;
  entries = GoodEntries();
  entries.push_back({"blank.txt", std::string(56u << 10, ' ')});
  EXPECT_EQ(Refusal(entries, limits), "");
  entries.back().content.append(8u << 10, ' ');
  EXPECT_NE(Refusal(entries, limits).find("decompression bomb"), std::string::npos);
}

}  // namespace
