// A PLM repository: the objects imported from content packages, kept in one
// SQLite database file per repository name.
//
// Where: the host's PLM data directory, QAVHOST_PLM_DIR when set, else
// $XDG_DATA_HOME/qavhost/plm, else $HOME/.local/share/qavhost/plm (created on
// demand). The file is "<name>.plmdb", where every byte of the name other than
// ASCII letters, digits, '-' and '_' is written "%XX", so that no name reaches
// outside the directory. Names are 1 to 128 bytes long.
//
// The database runs in WAL mode with a busy timeout, so that several processes
// may read and import at once; an import is one transaction (BEGIN IMMEDIATE):
// it is there whole or not at all, also when the process is killed midway.
//
// Schema (version 1, in PRAGMA user_version):
//   objects(id TEXT PRIMARY KEY,      the identifier given at import
//           package TEXT NOT NULL,    path of the package imported
//           kind TEXT NOT NULL,       the package's kind
//           source_id TEXT NOT NULL,  the object's id in its package
//           type TEXT NOT NULL, name TEXT NOT NULL,
//           imported TEXT NOT NULL)   UTC time, "YYYY-MM-DDTHH:MM:SSZ"
//   attributes(object TEXT NOT NULL REFERENCES objects(id), name TEXT NOT NULL,
//              value TEXT NOT NULL, PRIMARY KEY(object, name))
//   files(object TEXT NOT NULL REFERENCES objects(id), path TEXT NOT NULL,
//         bytes BLOB NOT NULL, PRIMARY KEY(object, path))
#ifndef QAVPLMRepository_h
#define QAVPLMRepository_h

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "QAVHostExport.h"
#include "QAVTypes.h"

class QAVContentPackage;
struct sqlite3;

class QAVHOST_API QAVPLMRepository {
 public:
  struct ObjectInfo {
    std::string id;
    std::string package;
    std::string kind;
    std::string sourceId;
    std::string type;
    std::string name;
    std::string imported;
    std::vector<std::pair<std::string, std::string>> attributes;  // sorted by name
    std::vector<std::pair<std::string, std::uint64_t>> files;     // path, size
  };

  QAVPLMRepository() = default;
  ~QAVPLMRepository();
  QAVPLMRepository(const QAVPLMRepository&) = delete;
  QAVPLMRepository& operator=(const QAVPLMRepository&) = delete;

  // The data directory (not created here), and the file of a repository name
  // (empty for an invalid name).
  static std::string Directory();
  static std::string FileOf(const std::string& name);

  // Opens (creating the directory, the file and the schema when needed). S_OK,
  // or E_FAIL with `error`.
  HRESULT Open(const std::string& name, std::string& error);
  // Opens a repository that exists, creating and writing nothing: for those
  // who only read. E_FAIL with `error` (naming the repository and its file)
  // when there is no such repository, or the file is not one.
  HRESULT OpenExisting(const std::string& name, std::string& error);
  void Close();
  const std::string& GetName() const { return _name; }

  // Every object, in identifier order (attributes and files not filled).
  HRESULT ListObjects(std::vector<ObjectInfo>& objects, std::string& error) const;
  // One object with its attributes and files: S_OK, S_FALSE when there is none
  // of that identifier, E_FAIL with `error`.
  HRESULT GetObject(const std::string& id, ObjectInfo& object, std::string& error) const;
  // The bytes of one of an object's files: S_OK, S_FALSE when there is none.
  HRESULT GetFileBytes(const std::string& id, const std::string& path, std::string& bytes,
                       std::string& error) const;

  // Writes every object of the package with a fresh identifier, its manifest
  // attributes, `attributes` (which win over the manifest's) and its files, in
  // one transaction. S_OK with `ids` in the manifest's order, or E_FAIL with
  // `error` and nothing written.
  HRESULT Import(const QAVContentPackage& package,
                 const std::vector<std::pair<std::string, std::string>>& attributes,
                 std::vector<std::string>& ids, std::string& error);

  // "ok", or what SQLite's integrity check reports.
  std::string CheckIntegrity() const;

 private:
  friend class QAVHostDriver;
  // The repository of that name cannot be opened (empty: every one can).
  static void SimulateUnopenable(const std::string& name);
  // The process is killed once `objects` objects are written inside an import's
  // transaction (negative: never).
  static void SimulateKillDuringImport(int objects);
  HRESULT OpenFile(const std::string& name, bool create, std::string& error);

  sqlite3* _db = nullptr;
  std::string _name;
};

#endif
