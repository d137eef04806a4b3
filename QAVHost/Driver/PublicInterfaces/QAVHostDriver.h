// The driver of the substitute host: what only the substitute has, apart from the
// host's API, for the tests and the program that play the host's part.
//
// - The session. A driver's life is one session of the host: it starts with the
//   host and its modules as a newly started process finds them and ends by
//   forgetting every state they built (singletons, caches, repositories loaded,
//   values read at load; files on disk stay). Restart does both at once, as a
//   new process would see the same files. One driver exists at a time.
// - The journal. While recording, what the host dispatched and showed is kept
//   in order: events sent through callback managers ("dispatch"), pointer checks
//   ("pointer-check"), commands destroyed ("command-destroyed").
// - Simulated input. Idle runs one pass of the host's loop (delayed
//   destructions, then idle subscribers); Resize resizes a viewer's window;
//   PointerMove, PointerPress and PointerRelease move the pointer over a viewer.
// - Scenes: a scene file opened in a new window of the current layout, as a
//   user opens a document.
// - The session recorder: capturing or replaying a recorded session.
// - Switches that make a host service fail, to test what callers do then.
#ifndef QAVHostDriver_h
#define QAVHostDriver_h

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QAVAtomicFile.h"
#include "QAVHostDriverExport.h"
#include "QAVHostJournal.h"
#include "QAVOmbObjectInContext.h"
#include "QAVRef.h"
#include "QAVSceneReader.h"

class QAV3DViewer;
class QAVCommand;
class QAVRulerDecoratedEditor;
class QAVViewer;
class QAVSysPreferenceRepository;

class QAVHOSTDRIVER_API QAVHostDriver {
 public:
  QAVHostDriver();
  ~QAVHostDriver();
  QAVHostDriver(const QAVHostDriver&) = delete;
  QAVHostDriver& operator=(const QAVHostDriver&) = delete;

  // The driver of the session under way, or null.
  static QAVHostDriver* Current();

  // Forgets every state of the host and its modules, as a new process would
  // start; the journal and the switches are kept.
  void Restart();

  // The journal.
  void StartRecording();  // empties the journal
  void StopRecording();   // keeps what was recorded
  bool IsRecording() const;
  std::vector<QAVJournalEntry> GetJournal() const;
  std::vector<QAVJournalEntry> GetJournal(std::string_view kind) const;
  void ClearJournal();

  // Simulated input: one pass of the host's loop. Returns the number of
  // destructions and idle calls made.
  int Idle();
  // Simulated input: the user resizes the graphic window of a viewer (which
  // announces it). Null is ignored.
  void Resize(QAVViewer* viewer, float width, float height);
  // Simulated input: the pointer over a viewer's graphic area. The viewer sends
  // QAVPointerEvent::POINTER_MOVED / _PRESSED / _RELEASED with what lies under
  // the pointer (nothing outside the graphic area). Null is ignored.
  void PointerMove(QAVViewer* viewer, double x, double y);
  void PointerPress(QAVViewer* viewer, double x, double y, int button = 1);
  void PointerRelease(QAVViewer* viewer, double x, double y, int button = 1);
  // Simulated input: the user types a value into a ruler editor and confirms
  // it. The editor takes the value and sends QAVRulerDecoratedEditor::
  // EDIT_MODIFY() through its callback manager, as the host does. Null is
  // ignored.
  void TypeRulerValue(QAVRulerDecoratedEditor* editor, double value);

  // Opens a scene file in a new window of the current layout (one is made
  // current when there is none), which becomes the current window: its 3D
  // viewer (with a visualisation viewer) takes the scene's graphic size,
  // usable area, main viewpoint, environment name and representations; the
  // scene's workbench becomes the frame context's and a new editor the current
  // one, its path running from a document object ("QAVDocument") to the
  // scene's root object. S_OK, or E_FAIL with `error` and nothing changed.
  HRESULT OpenScene(const std::string& path, std::string& error);
  void ShowScene(const QAVSceneDocument& scene);
  // The last scene shown (its product, workbench...) and its viewer, or null.
  const QAVSceneDocument* GetScene() const;
  QAV3DViewer* GetSceneViewer() const;

  // The object in context of the scene shown whose model object has that name
  // (QAVSceneObjects::Find), or null.
  QAVRef<QAVOmbObjectInContext> FindObject(const std::string& name) const;

  // The host's loop as it stands.
  int GetCommandCount() const;                      // commands alive
  QAVCommand* FindCommand(const char* name) const;  // the first alive of that name
  int GetPendingDestructionCount() const;

  // The session recorder (created by the first of these calls).
  void CaptureSession();  // starts capturing an empty session
  void ReplaySession(const std::map<std::string, int>& values);
  void StopSession();  // off; the recorder stays
  std::map<std::string, int> GetSessionValues() const;

  // Command headers, as a workbench defines them: a text file of lines
  // "<header name> = <command class name> [argument...]" (the arguments are
  // words, given to the commands the header starts as boxed strings); blank
  // lines and lines starting with "#" are skipped. Every header is created
  // (QAVCommandHeader::Create) or, when one of that name exists with the same class, kept. Returns
  // the number of lines defining a header, or -1 with `error` (the file, the line and what is
  // wrong) and no header created when the file cannot be read or a line is bad.
  int LoadCommandHeaders(const std::string& path, std::string& error);
  // Presses the button of a shown context bar whose command is `header`: the
  // frame's Press (QAVAfrCtxBarFrame.h) on the first bar that has one. S_OK
  // with `started` (may be null), or E_FAIL with `error`.
  HRESULT PressContextBarButton(const char* header, QAVCommand*& started, std::string& error);

  // Switches, each until turned off or the session ends.
  // Every atomic file write fails at `stage` (Stage::None: none fails).
  void FailAtomicWrites(QAVAtomicFile::Stage stage, std::size_t afterBytes = 0);
  void FailMutexCreation(bool fail);
  void FailPreferenceWrites(QAVSysPreferenceRepository* repository, bool fail);
  // The host has no context-bar manager (GetAfrCtxBarManager gives null).
  void RemoveContextBarManager(bool removed);
  // The PLM repository of that name cannot be opened (empty: every one can).
  void MakeRepositoryUnopenable(const std::string& name);
  // The process kills itself (SIGKILL) once `objects` objects are written
  // inside an import's transaction, before it commits (negative: never).
  void KillDuringImport(int objects);
  // The PLM's current collaborative space (empty: none is current).
  void SetCollaborativeSpace(const std::string& name);
  // The user's security context (role, organisation, collaborative space,
  // access level), and whether security is unavailable (its services fail).
  void SetSecurityParameters(const std::string& first, const std::string& second,
                             const std::string& third, const std::string& fourth);
  void SetSecurityUnavailable(bool unavailable);

 private:
  struct State;
  static void ResetSession();
  std::unique_ptr<State> _state;
};

#endif
