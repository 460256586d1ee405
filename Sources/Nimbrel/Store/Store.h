#pragma once

#include "Analysis/RuleMatching.h"
#include "Catalogue/Database.h"
#include "Catalogue/Settings.h"
#include "Catalogue/Snippets.h"
#include "Foundation/Result.h"
#include "Model/Filter.h"
#include "Model/Models.h"
#include "Store/CaptureControl.h"
#include "Store/CatalogueState.h"
#include "Store/DerivedState.h"
#include "Store/FolderWatcher.h"
#include "Store/FrontmostTracker.h"
#include "Store/Gallery.h"
#include "Store/Hotkeys.h"
#include "Store/NameKeys.h"
#include "Store/RuleEffect.h"
#include "Store/RuleMemory.h"
#include "Store/ScanPlan.h"
#include "Store/ShrinkRun.h"
#include "Store/StoreContext.h"
#include "Store/SyncRun.h"
#include "Store/Tags.h"
#include "Store/UnlockedShots.h"

#include <QImage>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QUuid>

#include <bitset>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

class BackgroundWork;
class ReloadRun;
struct Reloaded;
struct Protection;

/// The central object of a process: it owns catalogue, settings and background work, and publishes the state that all
/// views observe. Each published field has a signal that names the fact; what changes several fields tells each of
/// them once, at its end. Outcomes that the user should see go to `status`; nothing here shows a dialog. One per
/// process, main thread only.
class Store : public QObject {
  Q_OBJECT
 public:
  /// Opens the catalogue and starts what the role asks for: a worker watches and scans at once, every role but the tool
  /// then follows other processes by a poll. Fails only when the catalogue cannot be opened, which is fatal.
  [[nodiscard]] static Result<std::unique_ptr<Store>> open(StoreContext context);
  /// The same for the user whose process this is, in the present. Fails also when the account has no home folder.
  [[nodiscard]] static Result<std::unique_ptr<Store>> openForCurrentUser(
      ProcessRole role, Services services, std::function<bool()> isCompanionRunning = [] { return false; });
  ~Store() override;

  // Published state

  /// Every row of the catalogue, newest first, as of the last reload.
  [[nodiscard]] const ShotList& shots() const { return shots_; }
  /// The shots selected in the gallery.
  [[nodiscard]] const ShotIDSet& selection() const { return selection_; }
  void setSelection(ShotIDSet selection);
  /// All tags but those of projects, in the order of their code points.
  [[nodiscard]] const std::vector<std::string>& tags() const { return tags_; }
  /// Groups, smart collections and stacks of the shots.
  [[nodiscard]] const DerivedState& derived() const { return *derived_; }
  /// The sidebar's choice.
  [[nodiscard]] const Filter& filter() const { return filter_; }
  void setFilter(Filter filter);
  /// The text of the search field. runSearch() is what acts on it.
  [[nodiscard]] const std::string& query() const { return query_; }
  void setQuery(std::string query);
  /// The shots that the search found; absent when there is none.
  [[nodiscard]] const std::optional<ShotIDSet>& matchedIDs() const { return matchedIDs_; }
  /// The text around the hits of the search in a shot, which stand between U+0002 and U+0003; absent without a search
  /// and for a shot without a hit in its text. Worked out when first asked for: meant for the shots on the screen.
  [[nodiscard]] std::optional<std::string> snippet(const Shot& shot) const;
  /// Shots of the running batch that are still to be read; 0 when none runs.
  [[nodiscard]] std::size_t ocrRemaining() const;
  /// How far the encrypted exchange is; absent when none runs.
  [[nodiscard]] const std::optional<SyncProgress>& syncProgress() const { return sync_.progress(); }
  /// Sensitive shots that may be shown, because the owner has authenticated.
  [[nodiscard]] const ShotIDSet& unlockedSensitiveIDs() const { return unlocked_.ids(); }
  /// One line on the outcome of the last action; overwritten by the next.
  [[nodiscard]] const std::string& status() const { return status_; }
  /// For what is done outside of the Store.
  void setStatus(std::string status);
  /// Whether a capture is under way: from the request until the program that takes it has ended.
  [[nodiscard]] bool captureBusy() const { return captureBusy_; }
  /// Whether this process records.
  [[nodiscard]] bool recording() const { return recording_; }
  /// The row of the newest capture, of any process at the time this one started.
  [[nodiscard]] std::optional<ShotID> lastCapturedID() const { return lastCapturedID_; }
  /// Its shot, while it is in the catalogue.
  [[nodiscard]] std::optional<ShotPtr> lastCapturedShot() const;
  /// The recording made last, while its file is there.
  [[nodiscard]] const std::optional<std::string>& lastRecordingURL() const { return lastRecordingURL_; }
  void setLastRecordingURL(std::optional<std::string> path);
  /// Whether the tools for lastRecordingURL are up.
  [[nodiscard]] bool showRecordingTools() const { return showRecordingTools_; }
  void setShowRecordingTools(bool show);
  /// Whether the sheet that purges old shots is up.
  [[nodiscard]] bool showPurge() const { return showPurge_; }
  void setShowPurge(bool show);
  /// Whether the sheet of duplicates is up.
  [[nodiscard]] bool showDuplicates() const { return showDuplicates_; }
  void setShowDuplicates(bool show);
  /// Whether the sheet that shrinks shots is up.
  [[nodiscard]] bool showShrink() const { return showShrink_; }
  void setShowShrink(bool show);
  /// Whether the sheet that suggests what to clean up is up.
  [[nodiscard]] bool showCleanup() const { return showCleanup_; }
  void setShowCleanup(bool show);
  /// The shot that is to be edited, and an identifier of the last request for it: another one at each.
  [[nodiscard]] std::optional<ShotID> editRequestShotID() const { return editRequestShotID_; }
  [[nodiscard]] const QUuid& editRequestNonce() const { return editRequestNonce_; }
  /// Mirrors the setting.
  [[nodiscard]] bool showMenuBar() const { return showMenuBar_; }
  void setShowMenuBar(bool show);

  [[nodiscard]] std::size_t inboxCount() const;
  [[nodiscard]] std::size_t sensitiveCount() const;

  [[nodiscard]] Settings& settings() { return settings_; }
  [[nodiscard]] const Settings& settings() const { return settings_; }
  [[nodiscard]] Database& database() { return *database_; }
  [[nodiscard]] bool isBackgroundWorker() const { return Nimbrel::isBackgroundWorker(context_.role); }
  [[nodiscard]] Timestamp now() const { return context_.clock(); }

  /// The application that a capture started now is of; empty when it is one of ours, or not known.
  [[nodiscard]] Application currentCaptureApplication() const;

  // Catalogue

  /// Reads all rows again and works out what derives from them. Whoever writes to the catalogue ends with it. Blocks
  /// until done.
  void reload();
  /// One look at what other processes have changed in settings and catalogue. A large catalogue is read in later turns
  /// of the event loop, and published at once when all is read.
  void poll();

  // Scan and import

  /// Compares the folders with the catalogue: adds what is new, drops what is gone. Blocks until done.
  void scan();
  /// Scans once the disk has been quiet for a moment.
  void scheduleRescan();
  /// Watches the folders of the settings from now on; in a worker only.
  void restartWatching();
  /// Adds files that the user has chosen, where they lie, even if they were once taken out of the catalogue.
  void importFiles(const std::vector<std::string>& paths);
  /// Makes a file of a picture that never was one, as PNG in the first folder of new screenshots and with the name of a
  /// capture, and adds that. It is written in the background; why it could not be is told in the status.
  void importPicture(const QImage& picture);

  // Filing, renaming, removing

  /// The name under which a shot is filed.
  [[nodiscard]] std::string libraryName(const Shot& shot) const;
  /// Moves shots from the Inbox into the library. Those already there are passed over; one that cannot be moved stays.
  void file(const ShotList& shots);
  /// Files the whole Inbox.
  void fileAll();
  /// Renames the file within its folder; without an extension of its own the name keeps the old one.
  void rename(const Shot& shot, std::string_view name);
  /// Moves the files to the Trash and, once they are there, takes the shots out of the catalogue. Asynchronous.
  void trash(const ShotList& shots);
  /// Takes the shots out of the catalogue for good and leaves their files alone.
  void forget(const ShotList& shots);

  // Shrinking

  /// Encodes the files anew as HEIC beside the old ones, at the quality of the settings, and moves those to the Trash;
  /// a file that is HEIC, cannot be read or would not become smaller stays as it is. Blocks until the new files are on
  /// the disk; the Trash and the status follow.
  void recompress(const ShotList& shots);
  /// The same without blocking: pictures are encoded in the background, and files take their places one by one in the
  /// turns of the event loop. What is asked for while it runs follows it. The Trash and the status come at the end.
  void recompressInBackground(const ShotList& shots);
  /// Ends that before the next shot, what waits behind it included; what is shrunk already stays so and is told.
  void cancelRecompress();
  /// How far recompressInBackground() is; absent when it does not run.
  [[nodiscard]] const std::optional<ShrinkProgress>& shrinkProgress() const { return shrinkProgress_; }

  // Capture

  /// What becomes of our own panel, from which a capture may have been asked for, while it is taken.
  enum class Panel { Keep, Dismiss };
  /// Takes a screenshot or a recording after the delay of the settings. A screenshot becomes a row and is selected, a
  /// recording becomes lastRecordingURL. Nothing happens while captureBusy().
  void capture(CaptureMode mode, Panel panel);
  /// The path that a capture made now would have. Nothing is made there.
  [[nodiscard]] std::string captureLocation(CaptureMode mode, CaptureDestination destination) const;
  /// Asks the recording of this process to end and to write its file; without one it does nothing.
  void stopRecording() { capture_.stopRecording(); }
  /// Registers or gives up the global hotkeys, as the settings have them. The main application leaves them to a
  /// companion that runs. One that cannot be had is told in the log alone.
  void applyHotkeySetting();
  /// Shows lastRecordingURL() in the file manager, if there is one.
  void revealLastRecording();
  /// Moves lastCapturedShot() to the Trash, if there is one, and has all processes forget that it was the last.
  void undoLastCapture();
  /// Has the main window open the editor for a shot, once it may be seen.
  void requestEdit(const ShotPtr& shot);

  // Tags and projects

  /// Adds a tag to those that lack it. A comma in it becomes a blank.
  void addTag(std::string_view tag, const ShotList& shots);
  /// Takes every tag that is exactly this one away.
  void removeTag(std::string_view tag, const ShotList& shots);
  /// Puts the shots into the project, which is made if it is new. A comma in its name becomes a blank.
  void assignProject(std::string_view name, const ShotList& shots);
  /// Runs the user's rules over the shots.
  void applyAutomationRules(const ShotList& shots);

  // Filter, search and order

  // Worked out afresh at each call; who needs sections and order takes both from one answer.

  /// The shots that pass search and filter, newest first.
  [[nodiscard]] ShotList visible() const;
  /// What the gallery shows, in its order.
  [[nodiscard]] std::vector<GallerySection> sections() const;
  /// The shots of all sections in turn.
  [[nodiscard]] ShotList ordered() const;
  /// Searches for the query. New shots do not enter the result until the next search.
  void runSearch();
  /// The shots that a search for the text finds, newest first, whatever search and filter are.
  [[nodiscard]] ShotList matching(std::string_view text) const;
  /// Keeps the query in the sidebar, unless it is there.
  void saveCurrentSearch();
  /// The filter, if it is this search, becomes `all`; the search itself goes on.
  void removeSaved(std::string_view text);
  /// Ends the search, and shows a shot among those that look like it.
  void showSimilar(const Shot& shot);

  // Selection

  /// The selected ones of visible(), in its order.
  [[nodiscard]] ShotList selectedShots() const;
  /// The only selected shot, even if search or filter hide it.
  [[nodiscard]] std::optional<ShotPtr> focused() const;
  /// Selects all of visible().
  void selectAll();
  enum class Direction { Up, Down, Left, Right };
  enum class Extend { No, Yes };
  /// Moves the selection through ordered(), from whichever selected shot comes first to hand; up and down by a row of
  /// the grid. Extending adds all shots up to the target, and never takes one away. It stops at the first and the last
  /// shot; without a selection to start from the first shot becomes it.
  void move(Direction direction, Extend extend);
  /// How many columns the gallery has laid out; not published.
  [[nodiscard]] int gridColumns() const { return gridColumns_; }
  void setGridColumns(int columns) { gridColumns_ = columns; }

  // Actions on a shot

  // Whoever calls them asks for access first. None raises a dialog.

  /// Opens the file with the application for its kind.
  void open(const Shot& shot);
  /// Opens an address that was found in a shot, encoded, with the application for its scheme.
  void openURL(const std::string& url);
  /// Shows the file in the file manager.
  void reveal(const Shot& shot);
  /// The applications that open the file, the user's own first; their names and icons are for a menu.
  [[nodiscard]] std::vector<Workspace::Taker> openers(const Shot& shot) const;
  void openWith(const Shot& shot, const std::string& opener);
  /// Begins an e-mail with the file.
  void mail(const Shot& shot);
  /// What the desktop has to send files elsewhere.
  [[nodiscard]] std::vector<Workspace::Taker> senders() const;
  void send(const Shot& shot, const std::string& sender);
  /// Puts the file on the pasteboard, for file managers.
  void copyFile(const Shot& shot);
  /// Puts the picture on the pasteboard. Where the file cannot be read nothing happens. Blocks while it is decoded.
  void copyImage(const Shot& shot);
  /// Puts the recognised text on the pasteboard, which is emptied even if there is none.
  void copyText(const Shot& shot);
  /// Puts a text on the pasteboard; `what` it is, as a title, is told in the status.
  void copyString(std::string_view text, std::string_view what);
  /// Puts those lines of the recognised text that look like rows of a table on the pasteboard, a tab between cells;
  /// where there are none the pasteboard stays as it was.
  void copyAsTable(const Shot& shot);
  /// Opens a translation of the recognised text in the browser: sends its beginning to a service on the web.
  void translateText(const Shot& shot);
  /// Has the calendar take in an event of an hour from that moment on, through a file in the folder for caches.
  void createCalendarEvent(const Shot& shot, Timestamp date);

  // Background work

  // What starts by itself, as after a scan, leaves alone the roles that end before their event loop.

  /// Starts reading the shots without text in the background, unless that is going on or switched off.
  void startOCR();
  /// Starts looking for codes in the shots not looked at, once no text is read, unless that is going on.
  void startCodes();
  /// Starts hashing shots without a hash in the background, unless that is going on already.
  void startHashing();
  /// Whether shots are being read, looked through for codes or hashed.
  [[nodiscard]] bool isWorking() const;
  /// Reads, looks for codes and hashes in any role, until everything is done that can be; runs the rules over what was
  /// read. Comes back at once; workDone() tells the end, in a later turn of the event loop. Each picture that cannot be
  /// hashed is tried once, and what cannot be written is left pending.
  void workOff();
  using HashLog = std::function<void(std::int64_t hash, const Shot& shot)>;
  /// Hashes up to 5000 shots at once, the newest first, and returns how many got a hash. `log`, which may be empty,
  /// hears of each. Blocks until done: for the headless pass.
  std::size_t hashAllPending(const HashLog& log);

  // Encrypted exchange

  /// Exchanges the library with the vault folder of the settings in the background, and scans then; outcomes go to
  /// `status`. While one exchange runs, the next waits for it. The passphrase is wiped: move it here, with room of its
  /// own (`secretRoom`), so that no other copy of it stays behind.
  void syncEncrypted(std::string passphrase);

  // Sensitive data

  /// Looks through all recognised texts again, and returns how many shots look sensitive.
  std::size_t rescanSensitive();
  /// Whether the shot's content must not be shown.
  [[nodiscard]] bool isProtected(const Shot& shot) const;
  /// Runs the action, at once if none of the shots is protected, else when the owner has authenticated; not at all when
  /// that fails. Everything that shows or hands out shots goes through it.
  void withAccess(const ShotList& shots, std::function<void()> action);
  /// Protects everything sensitive again.
  void lockSensitive();
  /// Whether the user works in the application; so it is until told otherwise. Leaving it protects everything again.
  void setApplicationActive(bool active);

 Q_SIGNALS:
  void shotsChanged();
  void derivedChanged();
  void filterChanged();
  void queryChanged();
  void searchResultChanged();
  void ocrRemainingChanged();
  void syncProgressChanged();
  void unlockedSensitiveIDsChanged();
  void selectionChanged();
  void tagsChanged();
  void statusChanged();
  void captureBusyChanged();
  void recordingChanged();
  void lastCapturedIDChanged();
  void lastRecordingURLChanged();
  void showRecordingToolsChanged();
  void showPurgeChanged();
  void showDuplicatesChanged();
  void showShrinkChanged();
  void showCleanupChanged();
  void editRequestNonceChanged();
  void showMenuBarChanged();
  void shrinkProgressChanged();
  /// A shot has another file now: what is kept by the path of its old one is of no use any more.
  void fileReplaced(const std::string& oldPath);
  /// Everything sensitive is protected from now on: what still shows such shots is to close.
  void sensitiveLocked();
  /// The application's windows would be in a picture that is about to be taken; then, that they need not hide any more.
  /// They come back without taking the focus.
  void hidingRequested();
  void unhidingRequested();
  /// A screenshot has just been taken, or was found while it was new: what one wants to do with it next can be offered.
  /// It is among the shots.
  void freshShotArrived(const Nimbrel::ShotPtr& shot);
  /// The user is to see the main window, in front.
  void windowRequested();
  /// The hotkey of quick find was pressed: it is to open, or to close where it is open.
  void quickFindRequested();
  /// Nothing is left of what workOff() was asked for.
  void workDone();
  /// Once for each syncEncrypted(), when its outcome is in the status and what came in is in the catalogue.
  void syncEnded();

 private:
  explicit Store(StoreContext context);

  /// A published field.
  enum class Fact : std::uint8_t;
  static constexpr std::size_t mostFacts = 32;
  /// Holds the signals back until the outermost operation ends.
  class Operation;

  void start(std::unique_ptr<Database> database);
  void startWorking();
  void derive();
  void tell();
  template <class T>
  void publish(T& field, T value, Fact fact);
  void note(Fact fact);
  [[nodiscard]] std::optional<std::string> storedRecordingPath() const;
  [[nodiscard]] std::optional<ShotID> storedCapturedID() const;

  [[nodiscard]] Shot newShot(const std::string& path, Database::Filed filed) const;
  [[nodiscard]] Database::Filed filedByPlace(std::string_view path) const;
  void load();
  [[nodiscard]] bool isSnapshotCurrent() const;
  void reloadIfChanged();
  void reloadInTurns();
  void endReading();
  void readOn(std::chrono::milliseconds pause);
  void deriveElsewhere();
  void takeIn(Reloaded& reloaded);
  void keepSelected();
  [[nodiscard]] Protection protection() const;
  bool index(const std::string& path, Database::Filed filed);
  /// Both return the paths that were added.
  std::vector<std::string> applyScan(const ScanPlan& plan);
  std::vector<std::string> addNewFiles(const std::vector<std::string>& paths, Database::Filed filed);
  [[nodiscard]] std::optional<ShotID> newestOf(const std::vector<std::string>& paths) const;
  void announceIfFresh(ShotID id);
  void dropOrphans(const ShotList& unseen);
  void unlock(const ShotList& shots);

  class CaptureRun;
  void takeInCapture();
  void publishCapture();

  void prepareWork();
  void takeInText();
  void endSync(const Result<SyncResult>& result);

  /// The title of the application that a shot shows, locked or not; else empty.
  [[nodiscard]] std::string sourceTitle(ShotID id) const;
  struct RulePass;
  RulePass applyRules(std::span<const PreparedRule> rules, const ShotList& shots);
  void write(const RuleEffect& effect, const Shot& shot);
  void addProjects(const std::vector<std::string>& names);
  void fileThose(const ShotIDSet& ids);

  /// The row of the shot as it is now. Absent when it is gone, even if its id has come again.
  [[nodiscard]] std::optional<Shot> currentRow(const Shot& shot) const;
  /// Gives the shots the tags that `change` makes of those they have now.
  using TagChange = std::function<Tags(Tags)>;
  void changeTags(const ShotList& shots, const TagChange& change);
  void changeTags(const Shot& shot, const TagChange& change);

  [[nodiscard]] std::optional<Error> fileOne(const Shot& shot);
  [[nodiscard]] Result<std::string> moveFile(const Shot& shot, const std::string& target);
  [[nodiscard]] std::optional<Error> makeFolder(const std::string& path);
  void announce(const std::string& path);
  [[nodiscard]] bool isWhereItWas(const Shot& shot) const;
  void dropTrashed(const ShotList& shots);
  void dropRowAt(const Shot& shot);

  [[nodiscard]] std::shared_ptr<ShrinkRun> newShrinkRun(const ShotList& shots);
  void continueShrinking();
  void endShrinking();
  [[nodiscard]] bool replaceFile(const Shot& shot, const std::string& heic);
  void trashReplaced(const ShrinkRun::Outcome& outcome);

  StoreContext context_;
  Settings settings_;
  std::unique_ptr<Database> database_;

  ShotList shots_;
  ShotIDSet selection_;
  std::vector<std::string> tags_;
  std::shared_ptr<DerivedState> derived_ = std::make_shared<DerivedState>();
  Filter filter_;
  std::string query_;
  std::optional<ShotIDSet> matchedIDs_;
  Snippets snippets_;
  mutable NameKeys nameKeys_;
  UnlockedShots unlocked_;
  std::string status_;
  bool captureBusy_ = false;
  bool recording_ = false;
  std::optional<ShotID> lastCapturedID_;
  std::optional<std::string> lastRecordingURL_;
  bool showRecordingTools_ = false;
  bool showPurge_ = false;
  bool showDuplicates_ = false;
  bool showShrink_ = false;
  bool showCleanup_ = false;
  std::optional<ShotID> editRequestShotID_;
  QUuid editRequestNonce_ = QUuid::createUuid();
  bool showMenuBar_ = true;
  bool isApplicationActive_ = true;
  bool hasScanned_ = false;
  int gridColumns_ = 1;

  int operations_ = 0;
  std::bitset<mostFacts> facts_;

  std::unique_ptr<ReloadRun> reloadRun_;  ///< while the catalogue is read
  CatalogueState stateRead_{.othersVersion = 0, .ownChanges = -1};
  QTimer pollTimer_;
  QTimer pendingRescan_;
  std::optional<FrontmostTracker> tracker_;
  std::optional<FolderWatcher> watcher_;
  std::unique_ptr<BackgroundWork> work_;
  CaptureControl capture_;
  Hotkeys hotkeys_;
  RuleMemory ruleMemory_;
  SyncRun sync_;

  std::optional<ShrinkProgress> shrinkProgress_;
  std::deque<ShotList> waitingShrinks_;
  QThreadPool shrinkThreads_;
  std::shared_ptr<ShrinkRun> shrinkRun_;  ///< the one that runs; gives up before the threads are waited for
};

}  // namespace Nimbrel
