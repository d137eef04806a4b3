#include "QAVPLMRepository.h"

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <random>

#include "QAVContentPackage.h"
#include "QAVEnvironment.h"

namespace {

constexpr int kBusyTimeoutMs = 30000;
constexpr std::size_t kMaxNameLength = 128;

std::mutex switchesMutex;
std::string unopenable;  // guarded by switchesMutex
std::atomic<int> killAfterObjects{-1};

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

Statement Prepare(sqlite3* db, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
    sqlite3_finalize(statement);
    return nullptr;
  }
  return Statement(statement);
}

bool Bind(sqlite3_stmt* statement, int index, const std::string& text) {
  return sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT,
                             SQLITE_UTF8) == SQLITE_OK;
}

std::string Column(sqlite3_stmt* statement, int index) {
  const auto* text = sqlite3_column_text(statement, index);
  const int size = sqlite3_column_bytes(statement, index);
  return text ? std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size))
              : std::string();
}

std::string Message(sqlite3* db) { return db ? sqlite3_errmsg(db) : "out of memory"; }

// The columns of an object, in the order ObjectRow reads them and Import
// binds them.
#define QAV_OBJECT_COLUMNS "id, package, kind, source_id, type, name, imported"

QAVPLMRepository::ObjectInfo ObjectRow(sqlite3_stmt* statement) {
  QAVPLMRepository::ObjectInfo object;
  object.id = Column(statement, 0);
  object.package = Column(statement, 1);
  object.kind = Column(statement, 2);
  object.sourceId = Column(statement, 3);
  object.type = Column(statement, 4);
  object.name = Column(statement, 5);
  object.imported = Column(statement, 6);
  return object;
}

// A fresh identifier: 128 random bits in hexadecimal. The generator is seeded
// again in a child process, which would otherwise repeat its parent's
// identifiers after a fork.
std::string NewIdentifier() {
  static std::mutex mutex;
  static std::mt19937_64 generator;
  static pid_t seededFor = 0;
  const std::lock_guard<std::mutex> lock(mutex);
  if (seededFor != ::getpid()) {
    seededFor = ::getpid();
    std::random_device device;
    std::seed_seq seed{device(),
                       device(),
                       device(),
                       device(),
                       device(),
                       device(),
                       static_cast<unsigned>(seededFor),
                       static_cast<unsigned>(std::time(nullptr))};
    generator.seed(seed);
  }
  static constexpr char kHex[] = "0123456789abcdef";
  std::string id;
  for (int half = 0; half < 2; ++half) {
    std::uint64_t bits = generator();
    for (int i = 0; i < 16; ++i, bits >>= 4)
      id += kHex[bits & 0xF];
  }
  return id;
}

std::string UtcNow() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  (void)std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

}  // namespace

QAVPLMRepository::~QAVPLMRepository() { Close(); }

void QAVPLMRepository::Close() {
  if (_db) sqlite3_close(_db);
  _db = nullptr;
  _name.clear();
}

std::string QAVPLMRepository::Directory() {
  const auto set = [](const char* value) { return value && *value; };
  if (const char* dir = QAVGetEnv("QAVHOST_PLM_DIR"); set(dir)) return dir;
  if (const char* xdg = QAVGetEnv("XDG_DATA_HOME"); set(xdg))
    return std::string(xdg) + "/qavhost/plm";
  if (const char* home = QAVGetEnv("HOME"); set(home))
    return std::string(home) + "/.local/share/qavhost/plm";
  return ".qavhost/plm";
}

std::string QAVPLMRepository::FileOf(const std::string& name) {
  if (name.empty() || name.size() > kMaxNameLength) return {};
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string file;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
        (byte >= '0' && byte <= '9') || byte == '-' || byte == '_') {
      file += c;
    } else {
      file += '%';
      file += kHex[byte >> 4];
      file += kHex[byte & 0xF];
    }
  }
  return Directory() + "/" + file + ".plmdb";
}

void QAVPLMRepository::SimulateUnopenable(const std::string& name) {
  const std::lock_guard<std::mutex> lock(switchesMutex);
  unopenable = name;
}

void QAVPLMRepository::SimulateKillDuringImport(int objects) { killAfterObjects = objects; }

HRESULT QAVPLMRepository::Open(const std::string& name, std::string& error) {
  return OpenFile(name, true, error);
}

HRESULT QAVPLMRepository::OpenExisting(const std::string& name, std::string& error) {
  return OpenFile(name, false, error);
}

HRESULT QAVPLMRepository::OpenFile(const std::string& name, bool create, std::string& error) {
  Close();
  const std::string file = FileOf(name);
  if (file.empty()) {
    error = "the repository name '" + name + "' is invalid (1 to " +
            std::to_string(kMaxNameLength) + " bytes)";
    return E_FAIL;
  }
  {
    const std::lock_guard<std::mutex> lock(switchesMutex);
    if (!unopenable.empty() && unopenable == name) {
      error = "the repository '" + name + "' cannot be opened (unavailable)";
      return E_FAIL;
    }
  }
  // Only a regular file is a repository: SQLite would wait forever on a FIFO.
  std::error_code ec;
  const std::filesystem::file_status status = std::filesystem::status(file, ec);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    error = "the repository '" + name + "' (" + file + ") is not a regular file";
    return E_FAIL;
  }
  if (!create && !std::filesystem::exists(status)) {
    error = "the repository '" + name + "' does not exist (no " + file + ")";
    return E_FAIL;
  }
  if (create) {
    std::filesystem::create_directories(Directory(), ec);
    if (ec) {
      error = "cannot create the PLM directory " + Directory() + ": " + ec.message();
      return E_FAIL;
    }
  }
  sqlite3* db = nullptr;
  const int opened = sqlite3_open_v2(
      file.c_str(), &db,
      SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX, nullptr);
  const auto fail = [&](const std::string& what) {
    error = "the repository '" + name + "' (" + file + "): " + what + ": " + Message(db);
    sqlite3_close(db);
    return E_FAIL;
  };
  if (opened != SQLITE_OK) return fail("cannot be opened");
  sqlite3_busy_timeout(db, kBusyTimeoutMs);
  if (!create) {
    // A reader writes nothing, not even the schema: a file without it is not
    // a repository.
    int schema = -1;
    if (Statement version = Prepare(db, "PRAGMA user_version");
        version && sqlite3_step(version.get()) == SQLITE_ROW)
      schema = sqlite3_column_int(version.get(), 0);
    if (schema < 0) return fail("cannot be read");
    if (schema != 1) {
      error = "the repository '" + name + "' (" + file + ") is not a PLM repository (schema " +
              std::to_string(schema) + ", not 1)";
      sqlite3_close(db);
      return E_FAIL;
    }
    if (sqlite3_exec(db, "PRAGMA foreign_keys=ON", nullptr, nullptr, nullptr) != SQLITE_OK)
      return fail("cannot be read");
    _db = db;
    _name = name;
    return S_OK;
  }
  static const char* const kSchema =
      "PRAGMA journal_mode=WAL;"
      "PRAGMA foreign_keys=ON;"
      "BEGIN IMMEDIATE;"
      "CREATE TABLE IF NOT EXISTS objects(id TEXT PRIMARY KEY, package TEXT NOT NULL,"
      " kind TEXT NOT NULL, source_id TEXT NOT NULL, type TEXT NOT NULL, name TEXT NOT NULL,"
      " imported TEXT NOT NULL);"
      "CREATE TABLE IF NOT EXISTS attributes(object TEXT NOT NULL REFERENCES objects(id),"
      " name TEXT NOT NULL, value TEXT NOT NULL, PRIMARY KEY(object, name));"
      "CREATE TABLE IF NOT EXISTS files(object TEXT NOT NULL REFERENCES objects(id),"
      " path TEXT NOT NULL, bytes BLOB NOT NULL, PRIMARY KEY(object, path));"
      "PRAGMA user_version=1;"
      "COMMIT;";
  // Switching a new file to WAL takes a lock that SQLite does not wait for
  // when another process is creating the same file: retry within the busy
  // timeout.
  int prepared = SQLITE_BUSY;
  for (int waited = 0; waited < kBusyTimeoutMs; waited += 10) {
    prepared = sqlite3_exec(db, kSchema, nullptr, nullptr, nullptr);
    if (prepared != SQLITE_BUSY && prepared != SQLITE_LOCKED) break;
    if (sqlite3_get_autocommit(db) == 0) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    ::usleep(10000);
  }
  if (prepared != SQLITE_OK) {
    const std::string what = "cannot be prepared: " + Message(db);
    if (sqlite3_get_autocommit(db) == 0) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    error = "the repository '" + name + "' (" + file + "): " + what;
    sqlite3_close(db);
    return E_FAIL;
  }
  _db = db;
  _name = name;
  return S_OK;
}

HRESULT QAVPLMRepository::ListObjects(std::vector<ObjectInfo>& objects, std::string& error) const {
  objects.clear();
  if (!_db) {
    error = "no repository is open";
    return E_FAIL;
  }
  Statement list = Prepare(_db, "SELECT " QAV_OBJECT_COLUMNS " FROM objects ORDER BY id");
  if (!list) {
    error = Message(_db);
    return E_FAIL;
  }
  int step = SQLITE_ROW;
  while ((step = sqlite3_step(list.get())) == SQLITE_ROW)
    objects.push_back(ObjectRow(list.get()));
  if (step != SQLITE_DONE) {
    error = Message(_db);
    objects.clear();
    return E_FAIL;
  }
  return S_OK;
}

HRESULT QAVPLMRepository::GetObject(const std::string& id, ObjectInfo& object,
                                    std::string& error) const {
  object = ObjectInfo();
  if (!_db) {
    error = "no repository is open";
    return E_FAIL;
  }
  Statement one = Prepare(_db, "SELECT " QAV_OBJECT_COLUMNS " FROM objects WHERE id = ?1");
  Statement attributes =
      Prepare(_db, "SELECT name, value FROM attributes WHERE object = ?1 ORDER BY name");
  Statement files =
      Prepare(_db, "SELECT path, length(bytes) FROM files WHERE object = ?1 ORDER BY path");
  if (!one || !attributes || !files || !Bind(one.get(), 1, id) || !Bind(attributes.get(), 1, id) ||
      !Bind(files.get(), 1, id)) {
    error = Message(_db);
    return E_FAIL;
  }
  int step = sqlite3_step(one.get());
  if (step == SQLITE_DONE) return S_FALSE;
  if (step != SQLITE_ROW) {
    error = Message(_db);
    return E_FAIL;
  }
  object = ObjectRow(one.get());
  while ((step = sqlite3_step(attributes.get())) == SQLITE_ROW)
    object.attributes.emplace_back(Column(attributes.get(), 0), Column(attributes.get(), 1));
  if (step == SQLITE_DONE) {
    while ((step = sqlite3_step(files.get())) == SQLITE_ROW)
      object.files.emplace_back(Column(files.get(), 0),
                                static_cast<std::uint64_t>(sqlite3_column_int64(files.get(), 1)));
  }
  if (step != SQLITE_DONE) {
    error = Message(_db);
    object = ObjectInfo();
    return E_FAIL;
  }
  return S_OK;
}

HRESULT QAVPLMRepository::GetFileBytes(const std::string& id, const std::string& path,
                                       std::string& bytes, std::string& error) const {
  bytes.clear();
  if (!_db) {
    error = "no repository is open";
    return E_FAIL;
  }
  Statement file = Prepare(_db, "SELECT bytes FROM files WHERE object = ?1 AND path = ?2");
  if (!file || !Bind(file.get(), 1, id) || !Bind(file.get(), 2, path)) {
    error = Message(_db);
    return E_FAIL;
  }
  const int step = sqlite3_step(file.get());
  if (step == SQLITE_DONE) return S_FALSE;
  if (step != SQLITE_ROW) {
    error = Message(_db);
    return E_FAIL;
  }
  const void* blob = sqlite3_column_blob(file.get(), 0);
  const int size = sqlite3_column_bytes(file.get(), 0);
  if (blob) bytes.assign(static_cast<const char*>(blob), static_cast<std::size_t>(size));
  return S_OK;
}

HRESULT QAVPLMRepository::Import(const QAVContentPackage& package,
                                 const std::vector<std::pair<std::string, std::string>>& attributes,
                                 std::vector<std::string>& ids, std::string& error) {
  ids.clear();
  if (!_db) {
    error = "no repository is open";
    return E_FAIL;
  }
  if (package.GetObjects().empty()) return S_OK;
  const auto fail = [&](const std::string& what) {
    error = "import into '" + _name + "': " + what + ": " + Message(_db);
    sqlite3_exec(_db, "ROLLBACK", nullptr, nullptr, nullptr);
    ids.clear();
    return E_FAIL;
  };
  if (sqlite3_exec(_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
    return fail("cannot start the transaction");
  Statement object = Prepare(
      _db, "INSERT INTO objects(" QAV_OBJECT_COLUMNS ") VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7)");
  Statement attribute =
      Prepare(_db, "INSERT INTO attributes(object, name, value) VALUES(?1, ?2, ?3)");
  Statement file = Prepare(_db, "INSERT INTO files(object, path, bytes) VALUES(?1, ?2, ?3)");
  if (!object || !attribute || !file) return fail("cannot prepare the statements");
  const std::string now = UtcNow();
  const auto run = [](sqlite3_stmt* statement) {
    const bool done = sqlite3_step(statement) == SQLITE_DONE;
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    return done;
  };
  int written = 0;
  for (const QAVContentPackage::Object& item : package.GetObjects()) {
    const std::string id = NewIdentifier();
    if (!Bind(object.get(), 1, id) || !Bind(object.get(), 2, package.GetPath()) ||
        !Bind(object.get(), 3, package.GetKind()) || !Bind(object.get(), 4, item.id) ||
        !Bind(object.get(), 5, item.type) || !Bind(object.get(), 6, item.name) ||
        !Bind(object.get(), 7, now) || !run(object.get()))
      return fail("cannot write the object '" + item.id + "'");
    // The caller's attributes win over the manifest's.
    std::map<std::string, std::string> merged(item.attributes.begin(), item.attributes.end());
    for (const auto& [name, value] : attributes)
      merged[name] = value;
    for (const auto& [name, value] : merged) {
      if (!Bind(attribute.get(), 1, id) || !Bind(attribute.get(), 2, name) ||
          !Bind(attribute.get(), 3, value) || !run(attribute.get()))
        return fail("cannot write the attribute '" + name + "' of '" + item.id + "'");
    }
    for (const std::string& path : item.files) {
      const std::string* bytes = package.GetFile(path);
      if (!bytes) return fail("the file '" + path + "' is not in the package");
      if (!Bind(file.get(), 1, id) || !Bind(file.get(), 2, path) ||
          sqlite3_bind_blob64(file.get(), 3, bytes->data(), bytes->size(), SQLITE_STATIC) !=
              SQLITE_OK ||
          !run(file.get()))
        return fail("cannot write the file '" + path + "' of '" + item.id + "'");
    }
    ids.push_back(id);
    ++written;
    if (written == killAfterObjects.load()) (void)std::raise(SIGKILL);
  }
  if (sqlite3_exec(_db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
    return fail("cannot commit");
  return S_OK;
}

std::string QAVPLMRepository::CheckIntegrity() const {
  if (!_db) return "no repository is open";
  Statement check = Prepare(_db, "PRAGMA integrity_check");
  if (!check) return Message(_db);
  std::string result;
  while (sqlite3_step(check.get()) == SQLITE_ROW) {
    if (!result.empty()) result += '\n';
    result += Column(check.get(), 0);
  }
  return result.empty() ? Message(_db) : result;
}
