#include "QAVContentPackage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "QAVAtomicFile.h"

namespace {

using Json = nlohmann::json;
constexpr const char* kManifest = "manifest.json";

// Reads the whole of a regular file. Anything else (a folder, a FIFO, a device)
// is refused before it is read: its type is checked first, and the open does
// not wait for a writer should the path be swapped for a FIFO in between.
// False with `reason` when the file cannot be read; a folder is said not to be
// `expected` ("a package", "a file").
bool ReadWholeFile(const std::string& path, const char* expected, std::string& bytes,
                   std::string& reason) {
  const auto kindOf = [expected](mode_t mode) -> std::string {
    if (S_ISDIR(mode)) return std::string("is a folder, not ") + expected;
    if (S_ISFIFO(mode)) return "is a FIFO, not a regular file";
    if (S_ISSOCK(mode)) return "is a socket, not a regular file";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "is a device, not a regular file";
    return "is not a regular file";
  };
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) {
    reason = std::string("cannot be read: ") + std::strerror(errno);
    return false;
  }
  if (!S_ISREG(info.st_mode)) {
    reason = kindOf(info.st_mode);
    return false;
  }
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    reason = std::string("cannot be read: ") + std::strerror(errno);
    return false;
  }
  if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
    reason = kindOf(info.st_mode);
    ::close(fd);
    return false;
  }
  bytes.clear();
  bytes.reserve(static_cast<std::size_t>(info.st_size));
  char chunk[64 * 1024];
  while (true) {
    const ssize_t got = ::read(fd, chunk, sizeof chunk);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      reason = std::string("cannot be read: ") + std::strerror(errno);
      ::close(fd);
      bytes.clear();
      return false;
    }
    if (got == 0) break;
    bytes.append(chunk, static_cast<std::size_t>(got));
  }
  ::close(fd);
  return true;
}

std::uint32_t Le32(const std::string& b, std::size_t at) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
         (static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8) |
         (static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16) |
         (static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24);
}

std::uint16_t Le16(const std::string& b, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(b[at]) |
                                    (static_cast<unsigned char>(b[at + 1]) << 8));
}

// The zip library hands out names as C strings, so a name holding a NUL would
// reach us cut short. The central directory is walked here to see the names'
// real bytes. Archives it cannot walk (zip64 markers) are left to the library.
bool CentralNamesHoldNul(const std::string& b) {
  constexpr std::size_t kEnd = 22;
  if (b.size() < kEnd) return false;
  const std::size_t lowest = b.size() > kEnd + 0xFFFF ? b.size() - kEnd - 0xFFFF : 0;
  for (std::size_t at = b.size() - kEnd + 1; at-- > lowest;) {
    if (Le32(b, at) != 0x06054b50u) continue;
    const std::uint16_t count = Le16(b, at + 10);
    std::size_t entry = Le32(b, at + 16);
    if (entry == 0xFFFFFFFFu) return false;
    for (std::uint16_t i = 0; i < count; ++i) {
      if (entry + 46 > b.size() || Le32(b, entry) != 0x02014b50u) return false;
      const std::size_t nameLength = Le16(b, entry + 28);
      const std::size_t extra = Le16(b, entry + 30);
      const std::size_t comment = Le16(b, entry + 32);
      if (entry + 46 + nameLength > b.size()) return false;
      if (std::memchr(b.data() + entry + 46, '\0', nameLength) != nullptr) return true;
      entry += 46 + nameLength + extra + comment;
    }
    return false;
  }
  return false;
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

// Checks the manifest's text and fills the package's description. False with
// `reason` on the first fault.
bool ParseManifest(const std::string& text, std::string& kind, std::string& title,
                   std::vector<QAVContentPackage::Object>& objects, std::string& reason) {
  const Json manifest = Json::parse(text, nullptr, false);
  if (manifest.is_discarded()) {
    reason = "manifest.json is not valid JSON";
    return false;
  }
  if (!manifest.is_object()) {
    reason = "manifest.json is not a JSON object";
    return false;
  }
  const auto text_member = [&](const Json& owner, const char* key, const std::string& where,
                               std::string& out, bool required) {
    const auto it = owner.find(key);
    if (it == owner.end()) {
      if (required) reason = "manifest.json: " + where + "\"" + key + "\" is missing";
      return !required;
    }
    if (!it->is_string()) {
      reason = "manifest.json: " + where + "\"" + key + "\" must be a text";
      return false;
    }
    out = it->get<std::string>();
    return true;
  };
  std::string format;
  if (!text_member(manifest, "format", "", format, true)) return false;
  if (format != "orlix") {
    reason = "manifest.json: \"format\" is " + Quoted(format) + ", not 'orlix'";
    return false;
  }
  const auto version = manifest.find("version");
  if (version == manifest.end() || !version->is_number_integer()) {
    reason = "manifest.json: \"version\" must be an integer";
    return false;
  }
  if (version->get<std::int64_t>() != 1) {
    reason = "manifest.json: version " + version->dump() + " is not supported (only 1)";
    return false;
  }
  if (!text_member(manifest, "kind", "", kind, true)) return false;
  static const std::set<std::string> kinds{"Material", "Ambience", "Human", "Props"};
  if (kinds.count(kind) == 0) {
    reason =
        "manifest.json: unknown kind " + Quoted(kind) + " (Material, Ambience, Human or Props)";
    return false;
  }
  if (!text_member(manifest, "title", "", title, true)) return false;
  const auto list = manifest.find("objects");
  if (list == manifest.end() || !list->is_array()) {
    reason = "manifest.json: \"objects\" must be an array";
    return false;
  }
  std::set<std::string> ids;
  for (std::size_t i = 0; i < list->size(); ++i) {
    const Json& item = (*list)[i];
    const std::string where = "objects[" + std::to_string(i) + "].";
    if (!item.is_object()) {
      reason = "manifest.json: objects[" + std::to_string(i) + "] must be an object";
      return false;
    }
    QAVContentPackage::Object object;
    if (!text_member(item, "id", where, object.id, true) ||
        !text_member(item, "type", where, object.type, true) ||
        !text_member(item, "name", where, object.name, true))
      return false;
    if (object.id.empty()) {
      reason = "manifest.json: " + where + "\"id\" is empty";
      return false;
    }
    if (!ids.insert(object.id).second) {
      reason = "manifest.json: the object id " + Quoted(object.id) + " is given twice";
      return false;
    }
    if (const auto files = item.find("files"); files != item.end()) {
      if (!files->is_array()) {
        reason = "manifest.json: " + where + "\"files\" must be an array";
        return false;
      }
      for (const Json& file : *files) {
        if (!file.is_string()) {
          reason = "manifest.json: " + where + "\"files\" must hold texts";
          return false;
        }
        std::string name = file.get<std::string>();
        if (!QAVContentPackage::IsValidEntryName(name)) {
          reason = "manifest.json: object " + Quoted(object.id) + " lists the file name " +
                   Quoted(name) + ", which is not a plain relative name";
          return false;
        }
        if (std::find(object.files.begin(), object.files.end(), name) != object.files.end()) {
          reason =
              "manifest.json: object " + Quoted(object.id) + " lists " + Quoted(name) + " twice";
          return false;
        }
        object.files.push_back(std::move(name));
      }
    }
    if (const auto attributes = item.find("attributes"); attributes != item.end()) {
      if (!attributes->is_object()) {
        reason = "manifest.json: " + where + "\"attributes\" must be an object";
        return false;
      }
      for (const auto& [key, value] : attributes->items()) {
        if (!value.is_string()) {
          reason = "manifest.json: " + where;
          reason.append("attributes.").append(key).append(" must be a text");
          return false;
        }
        object.attributes.emplace_back(key, value.get<std::string>());
      }
    }
    objects.push_back(std::move(object));
  }
  return true;
}

struct ArchiveCloser {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct EntryCloser {
  void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

}  // namespace

bool QAVContentPackage::IsValidEntryName(const std::string& name) {
  if (name.empty() || name.front() == '/') return false;
  if (name.find('\\') != std::string::npos || name.find('\0') != std::string::npos) return false;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = name.find('/', start);
    const std::string part = name.substr(start, end == std::string::npos ? end : end - start);
    if (part.empty() || part == "." || part == "..") return false;
    if (end == std::string::npos) return true;
    start = end + 1;
  }
}

void QAVContentPackage::Clear() { *this = QAVContentPackage(); }

const std::string* QAVContentPackage::GetFile(const std::string& name) const {
  const auto it = _files.find(name);
  return it == _files.end() ? nullptr : &it->second;
}

HRESULT QAVContentPackage::Open(const std::string& path, std::string& error) {
  return Open(path, Limits(), error);
}

HRESULT QAVContentPackage::Open(const std::string& path, const Limits& limits, std::string& error) {
  Clear();
  const auto refuse = [&](const std::string& reason) {
    Clear();
    error = path + ": " + reason;
    return E_FAIL;
  };
  std::string bytes;
  std::string unread;
  if (!ReadWholeFile(path, "a package", bytes, unread)) return refuse(unread);
  if (bytes.empty()) return refuse("not a zip archive (the file is empty)");
  if (CentralNamesHoldNul(bytes)) return refuse("an entry name holds a NUL byte");

  zip_error_t zipError;
  zip_error_init(&zipError);
  zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &zipError);
  if (!source) {
    zip_error_fini(&zipError);
    return refuse("out of memory");
  }
  std::unique_ptr<zip_t, ArchiveCloser> archive(
      zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &zipError));
  if (!archive) {
    const int code = zip_error_code_zip(&zipError);
    zip_error_fini(&zipError);
    zip_source_free(source);
    if (code == ZIP_ER_NOZIP) return refuse("not a zip archive");
    if (code == ZIP_ER_INCONS) return refuse("the archive is truncated or inconsistent");
    if (code == ZIP_ER_MEMORY) return refuse("out of memory");
    return refuse("the archive cannot be read");
  }
  zip_error_fini(&zipError);

  const std::uint64_t archiveSize = bytes.size();
  const std::uint64_t cap =
      std::min(limits.maxTotalBytes, std::max(limits.allowance, limits.ratio * archiveSize));
  std::uint64_t inflated = 0;
  std::map<std::string, std::string> entries;
  std::set<std::string> folders;  // the names of folder entries ("name/"), without the slash
  const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
  std::vector<char> chunk(std::size_t{64} * 1024);
  for (zip_int64_t i = 0; i < count; ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    const char* rawName = zip_get_name(archive.get(), index, ZIP_FL_ENC_RAW);
    if (!rawName) return refuse("an entry has no name");
    std::string name(rawName);
    const bool folder = !name.empty() && name.back() == '/';
    if (folder) name.pop_back();
    if (!IsValidEntryName(name))
      return refuse("the entry name " + Quoted(rawName) +
                    " is not allowed (absolute, empty, '.' or '..' part, or backslash)");
    if (entries.count(name) != 0) return refuse("the entry " + Quoted(name) + " is given twice");
    std::string content;
    if (!folder) {
      std::unique_ptr<zip_file_t, EntryCloser> entry(zip_fopen_index(archive.get(), index, 0));
      if (!entry) return refuse("the entry " + Quoted(name) + " cannot be opened");
      while (true) {
        const zip_int64_t got = zip_fread(entry.get(), chunk.data(), chunk.size());
        if (got < 0) {
          const int code = zip_error_code_zip(zip_file_get_error(entry.get()));
          if (code == ZIP_ER_CRC)
            return refuse("the entry " + Quoted(name) + " fails its checksum (corrupt)");
          return refuse("the entry " + Quoted(name) + " is corrupt or truncated");
        }
        if (got == 0) break;
        inflated += static_cast<std::uint64_t>(got);
        if (inflated > cap)
          return refuse("inflates to more than " + std::to_string(cap) + " bytes (archive of " +
                        std::to_string(archiveSize) + " bytes): refused as a decompression bomb");
        content.append(chunk.data(), static_cast<std::size_t>(got));
      }
      zip_stat_t stat;
      zip_stat_init(&stat);
      if (zip_stat_index(archive.get(), index, 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) &&
          stat.size != content.size())
        return refuse("the entry " + Quoted(name) + " is truncated or corrupt");
    }
    if (folder) folders.insert(name);
    entries.emplace(name, std::move(content));
  }

  const auto manifest = entries.find(kManifest);
  if (manifest == entries.end()) return refuse("no manifest.json at the archive's root");
  std::string reason;
  if (!ParseManifest(manifest->second, _kind, _title, _objects, reason)) return refuse(reason);
  // The listed files' contents move over from the entries; a file that two
  // objects list moves once.
  for (const Object& object : _objects) {
    for (const std::string& file : object.files) {
      const auto it = entries.find(file);
      if (it == entries.end())
        return refuse("object " + Quoted(object.id) + " lists " + Quoted(file) +
                      ", which is not in the archive");
      if (folders.count(file) != 0)
        return refuse("object " + Quoted(object.id) + " lists " + Quoted(file) +
                      ", which the archive holds as a folder, not a file");
      if (_files.count(file) == 0) _files.emplace(file, std::move(it->second));
    }
  }
  _path = path;
  _archiveSize = archiveSize;
  _inflatedSize = inflated;
  return S_OK;
}

HRESULT QAVContentPackage::Pack(const std::string& dir, const std::string& out,
                                std::string& error) {
  namespace fs = std::filesystem;
  const auto refuse = [&](const std::string& reason) {
    error = dir + ": " + reason;
    return E_FAIL;
  };
  std::error_code ec;
  const fs::file_status folder = fs::status(dir, ec);
  if (!fs::exists(folder)) return refuse("no such folder");
  if (!fs::is_directory(folder)) return refuse("is not a folder");
  if (fs::is_directory(fs::status(out, ec)))
    return refuse("cannot write " + out + ": it is a folder");
  std::string manifestText;
  std::string unread;
  if (!ReadWholeFile((fs::path(dir) / kManifest).string(), "a file", manifestText, unread))
    return refuse("no readable manifest.json in the folder (manifest.json " + unread + ")");
  std::string kind;
  std::string title;
  std::vector<Object> objects;
  std::string reason;
  if (!ParseManifest(manifestText, kind, title, objects, reason)) return refuse(reason);

  // The contents stay alive until the archive is written: the zip library reads
  // them when it closes the archive.
  std::deque<std::pair<std::string, std::string>> contents;
  contents.emplace_back(kManifest, std::move(manifestText));
  std::set<std::string> added{kManifest};
  for (const Object& object : objects) {
    for (const std::string& file : object.files) {
      if (!added.insert(file).second) continue;
      const fs::path where = fs::path(dir) / file;
      if (!fs::is_regular_file(fs::symlink_status(where, ec)))
        return refuse("object " + Quoted(object.id) + " lists " + Quoted(file) +
                      ", which is not a regular file of the folder");
      std::string content;
      if (!ReadWholeFile(where.string(), "a file", content, unread))
        return refuse(Quoted(file) + " " + unread);
      contents.emplace_back(file, std::move(content));
    }
  }

  zip_error_t zipError;
  zip_error_init(&zipError);
  zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &zipError);
  if (!target) {
    zip_error_fini(&zipError);
    return refuse("out of memory");
  }
  zip_source_keep(target);
  zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, &zipError);
  zip_error_fini(&zipError);
  if (!archive) {
    zip_source_free(target);
    zip_source_free(target);
    return refuse("the archive cannot be made");
  }
  bool added_all = true;
  for (const auto& [name, content] : contents) {
    zip_source_t* data = zip_source_buffer(archive, content.data(), content.size(), 0);
    if (!data || zip_file_add(archive, name.c_str(), data, ZIP_FL_ENC_UTF_8) < 0) {
      if (data) zip_source_free(data);
      added_all = false;
      break;
    }
  }
  if (!added_all || zip_close(archive) != 0) {
    zip_discard(archive);
    zip_source_free(target);
    return refuse("the archive cannot be written");
  }
  std::string packed;
  bool read = false;
  if (zip_source_open(target) == 0) {
    if (zip_source_seek(target, 0, SEEK_END) == 0) {
      const zip_int64_t size = zip_source_tell(target);
      if (size >= 0 && zip_source_seek(target, 0, SEEK_SET) == 0) {
        packed.resize(static_cast<std::size_t>(size));
        read = zip_source_read(target, packed.data(), packed.size()) == size;
      }
    }
    zip_source_close(target);
  }
  zip_source_free(target);
  if (!read) return refuse("the archive cannot be written");
  std::string writeError;
  if (!QAVAtomicFile::Write(out, packed, &writeError))
    return refuse("cannot write " + out + ": " + writeError);
  return S_OK;
}
