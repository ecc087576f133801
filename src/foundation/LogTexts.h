#pragma once

// The log lines of the layout and of persistence, one constant each. These
// lines are part of the behaviour (people and scripts follow them), so each
// text lives here once and the code logs through the constant. They are
// printf formats for qCDebug(category, format, ...): counts are %ld (pass
// long), texts %s (pass qUtf8Printable).
namespace LogTexts {

// Loading and reconciliation
inline constexpr char kLoadInitialCalled[] = "🎯 [LaunchpadViewModel] loadInitial() called";
inline constexpr char kLoadQueued[] = "loadInitial already running; queued one pending reload";
inline constexpr char kLoadedFolders[] = "Loaded %ld folders from repository";
inline constexpr char kLoadedFolder[] = "Folder %ld: %s with %ld apps and %ld system folders";
inline constexpr char kLoadedSlots[] = "Loaded %ld slots from repository";
inline constexpr char kSanitizeMalformed[] = "🧹 [SANITIZE LOG] Removed %ld malformed/duplicate slot entries";
inline constexpr char kSanitizeFolderMembers[] = "🧹 [SANITIZE LOG] Cleared %ld stale folder-member app keys from slots";
inline constexpr char kSanitizeSaving[] = "🧹 [SANITIZE LOG] Cleaned malformed slot keys on load; saving sanitized slots";
inline constexpr char kSanitizeWidgets[] = "🧹 [SANITIZE LOG] Cleared %ld orphaned widget markers from slots";
inline constexpr char kSanitizeUnreachable[] = "🧹 [SANITIZE LOG] Placed %ld folders and widgets that stood on no cell";
inline constexpr char kSanitizeWorkflows[] = "🧹 [SANITIZE LOG] Cleared %ld orphaned workflow markers from slots";
inline constexpr char kNoCatalogue[] = "No application catalogue; the stored layout is kept without a scan";
inline constexpr char kFetchedApps[] = "Fetched %ld apps";
inline constexpr char kSlotsEmpty[] = "Slots empty, initializing from apps";
inline constexpr char kSlotsNotEmpty[] = "Slots not empty, cleaning up and syncing with current apps";
inline constexpr char kAppMoved[] = "🔀 [CLEANUP] %s moved from %s to %s; its place in the layout follows it";
inline constexpr char kCleanupGridApp[] = "🗑️ [CLEANUP] Removing deleted app from slot %ld: %s";
inline constexpr char kCleanupFolderApps[] = "🗑️ [CLEANUP] Removing %ld deleted apps from folder '%s'";
inline constexpr char kCleanupFolderEmpty[] = "🗑️ [CLEANUP] Folder '%s' is now empty, marking for deletion";
inline constexpr char kHiddenOnGrid[] = "👁️ [HIDE LOG] Hidden app %s was on the grid at slot %ld, clearing it";

// Placement, removal and hiding
inline constexpr char kInsertPlaced[] = "📝 [INSERT LOG] Placed %s in empty slot %ld";
inline constexpr char kInsertAppended[] = "📝 [INSERT LOG] Appended %s to end of slots at index %ld";
inline constexpr char kInsertAlreadyOnGrid[] = "📝 [INSERT LOG] %s already in slot %ld, not inserted again";
inline constexpr char kInsertRefused[] = "📝 [INSERT LOG] %s not inserted: %s";
inline constexpr char kRemoveNotFound[] = "🗑️ [REMOVE LOG] Key %s not found in slots";
inline constexpr char kRemoved[] = "🗑️ [REMOVE LOG] Removing %s from slot %ld, slot becomes empty";
inline constexpr char kHiding[] = "👁️ [HIDE LOG] Hiding app: %s";
inline constexpr char kHideNotOnGrid[] = "👁️ [HIDE LOG] App %s not found in slots (may already be hidden or in folder)";
inline constexpr char kHideFreeing[] = "👁️ [HIDE LOG] App %s found at slot %ld, freeing this slot";
inline constexpr char kUnhideNotHidden[] = "👁️ [UNHIDE LOG] App %s is not in hidden list, skipping";
inline constexpr char kUnhiding[] = "👁️ [UNHIDE LOG] Unhiding app: %s";

// Folders
inline constexpr char kFolderCreating[] = "📁 [FOLDER LOG] Creating folder '%s' with %ld apps and %ld system folders";
inline constexpr char kFolderNoMembers[] = "📁 [FOLDER LOG] Folder '%s' has no members, not created";
inline constexpr char kFolderTakingApps[] = "📁 [FOLDER LOG] Removing %ld apps from main grid slots to place in folder";
inline constexpr char kFolderAppTaken[] = "📁 [FOLDER LOG] App %s removed from slot %ld to be placed in folder";
inline constexpr char kFolderPlaced[] = "📁 [FOLDER LOG] Placing folder '%s' in empty slot %ld";
inline constexpr char kFolderAppended[] = "📁 [FOLDER LOG] No empty slots found, appending folder '%s' to end of slots";
inline constexpr char kFolderNotFound[] = "📁 [FOLDER LOG] Folder %s not found, nothing updated";
inline constexpr char kFolderAppReturned[] = "📁 [FOLDER LOG] App %s returned to its original slot %ld";
inline constexpr char kFolderDissolving[] = "📁 [FOLDER LOG] Dissolving folder '%s' with %ld apps";
inline constexpr char kFolderEmptyInUpdate[] = "🔧 Folder is empty in updateFolder, deleting...";

// Drag-and-drop moves of the main grid
inline constexpr char kDragNotOnGrid[] = "🔄 [DRAG LOG] Item %s not found in slots, adding to target position %ld";
inline constexpr char kDragPlacedOnEmpty[] = "🔄 [DRAG LOG] Target slot %ld was empty, simple placement completed";
inline constexpr char kDragTargetOccupied[] = "🔄 [DRAG LOG] Target slot %ld was occupied by %s, need to relocate it";
inline constexpr char kDragDisplacedMoved[] = "🔄 [DRAG LOG] Moved displaced item %s to empty slot %ld";
inline constexpr char kDragDisplacedToNextPage[] = "🔄 [DRAG LOG] No empty slots on page, moved %s to new page at slot %ld";
inline constexpr char kDragRefused[] = "🔄 [DRAG LOG] %s not moved: %s";
inline constexpr char kDragWidgetKey[] = "🔄 [DRAG LOG] %s is a widget cell; widgets are moved with moveWidget";
inline constexpr char kDragWidgetTarget[] = "🔄 [DRAG LOG] Target slot %ld belongs to widget area, %s not moved";
inline constexpr char kDragSameSlot[] = "🔄 [DRAG LOG] %s dropped on same slot %ld, no movement needed";
inline constexpr char kDragMoving[] = "🔄 [DRAG LOG] Moving %s from slot %ld to slot %ld";
inline constexpr char kDragDuplicate[] = "🔄 [DRAG LOG] Duplicate detected at target=%ld. Cleared original slot %ld and kept %s at target";
inline constexpr char kDragSkippedClear[] = "🔄 [DRAG LOG] Skipped clearing original slot %ld because it no longer contains %s";
inline constexpr char kDragSimpleMove[] = "🔄 [DRAG LOG] Simple move: %s moved from %ld to %ld (target was empty or malformed)";
inline constexpr char kDragAttemptShift[] = "🔄 [DRAG LOG] Target slot %ld is occupied by %s, attempting shift operation";
inline constexpr char kDragRowHasRoom[] = "🔄 [DRAG LOG] Found empty slots in row, performing shift operation";
inline constexpr char kDragWillShiftLeft[] = "🔄 [DRAG LOG] Will shift left, empty slot found at %ld";
inline constexpr char kDragShiftingLeft[] = "🔄 [DRAG LOG] Executing left shift operation";
inline constexpr char kDragWillShiftRight[] = "🔄 [DRAG LOG] Will shift right, empty slot found at %ld";
inline constexpr char kDragShiftingRight[] = "🔄 [DRAG LOG] Executing right shift operation";
inline constexpr char kDragShifted[] = "🔄 [DRAG LOG] Shifted %s from slot %ld to slot %ld";
inline constexpr char kDragPlaced[] = "🔄 [DRAG LOG] Placed %s at target slot %ld";
inline constexpr char kDragSkippedClearAfterShift[] = "🔄 [DRAG LOG] Skipped clearing original slot %ld after shift because it no longer contains %s";
inline constexpr char kDragClearedCarriedCopy[] = "🔄 [DRAG LOG] Cleared shifted copy of %s at slot %ld";
inline constexpr char kDragRowFull[] = "🔄 [DRAG LOG] No empty slots in row, searching for empty slots on page";
inline constexpr char kDragFoundOnPage[] = "🔄 [DRAG LOG] Found empty slot at %ld, moving displaced item there";
inline constexpr char kDragSkippedClearRelocation[] = "🔄 [DRAG LOG] Skipped clearing original slot %ld (page relocation) because it no longer contains %s";
inline constexpr char kDragRelocated[] = "🔄 [DRAG LOG] Moved: %s to %ld, %s to %ld";
inline constexpr char kDragPageFull[] = "🔄 [DRAG LOG] No empty slots found on page, performing simple swap";
inline constexpr char kDragSwapped[] = "🔄 [DRAG LOG] Swapped: %s moved to %ld, %s moved to %ld";

// The grid view's side of a drag
inline constexpr char kGridDragStartedApp[] = "🎯 [GRID DRAG LOG] Started dragging app: %s from page slot %ld";
inline constexpr char kGridDragStartedFolder[] = "🎯 [GRID DRAG LOG] Started dragging folder: '%s' from page slot %ld";
inline constexpr char kGridDragSkipped[] = "🎯 [GRID DRAG LOG] Item moved to other page, skip handleDragEnd";
inline constexpr char kGridDragSkippedFolder[] = "🎯 [GRID DRAG LOG] Folder moved to other page, skip handleDragEndFolder";
inline constexpr char kGridDragEnded[] = "🎯 [GRID DRAG LOG] Drag ended: %s from page slot %ld to local slot %ld (absolute slot %ld)";
inline constexpr char kGridDragEndedFolder[] = "🎯 [GRID DRAG LOG] Folder drag ended: '%s' from page slot %ld to local slot %ld (absolute slot %ld)";
inline constexpr char kGridDropBlocked[] = "🎯 [GRID DRAG LOG] Drop blocked: target absolute slot %ld belongs to widget area";
inline constexpr char kGridDropBlockedFolder[] = "🎯 [GRID DRAG LOG] Drop blocked: folder target absolute slot %ld belongs to widget area";
inline constexpr char kGridCallingMove[] = "🎯 [GRID DRAG LOG] Calling moveKeyInSlots for %s to absolute slot %ld";
inline constexpr char kGridCallingMoveFolder[] = "🎯 [GRID DRAG LOG] Calling moveKeyInSlots for folder %s to absolute slot %ld";
inline constexpr char kGridToNeighbourPage[] = "🎯 [GRID DRAG LOG] Moving entry to %s page, target slot: %ld";
inline constexpr char kGridAppToNeighbourPage[] = "🎯 [GRAG LOG] Moving app %s to neighbor page at slot %ld";
inline constexpr char kGridFolderToNeighbourPage[] = "🎯 [GRID DRAG LOG] Moving folder '%s' to neighbor page at slot %ld";
inline constexpr char kGridWorkflowToNeighbourPage[] = "🎯 [GRID DRAG LOG] Moving workflow '%s' to neighbor page at slot %ld";
inline constexpr char kGridWidgetToNeighbourPage[] = "🎯 [GRID DRAG LOG] Widget drag to neighbor page not implemented";
inline constexpr char kGridSystemFolderToNeighbourPage[] = "🎯 [GRID DRAG LOG] System folder drag to neighbor page not supported";

// Widgets
inline constexpr char kWidgetAdd[] = "[Widgets] addWidget id=%s size=%ldx%ld requested=%ld";
inline constexpr char kWidgetMove[] = "[Widgets] moveWidget id=%s size=%ldx%ld requested=%ld";
inline constexpr char kWidgetNotFound[] = "[Widgets] moveWidget: widget not found %s";
inline constexpr char kWidgetCandidate[] = "[Widgets] moveWidget: candidate=%ld pageStart=%ld";
inline constexpr char kWidgetRectBlocked[] = "[Widgets] Rect cell idx=%ld contains widget marker id=%s blocked=%s";
inline constexpr char kWidgetNextPage[] = "[Widgets] No suitable rect on page; place at next page start";
inline constexpr char kWidgetPlaced[] = "[Widgets] placed widget at %ld with blocked cells";
inline constexpr char kWidgetDisplaced[] = "[Widgets] displaced count=%ld";
inline constexpr char kWidgetSnapshot[] = "[Widgets] slots snapshot: %s";
inline constexpr char kWidgetCannotFit[] = "[Widgets] widget %s of size %ldx%ld cannot fit a page of %ldx%ld cells";
inline constexpr char kWidgetRelaying[] = "[Widgets] re-laying widget %s: its cells no longer form a rectangle inside one page";

// Repositories
inline constexpr char kFoldersNone[] = "No folders data found in UserDefaults";
inline constexpr char kFoldersDecodeFailed[] = "Failed to decode folders from UserDefaults: %s";
inline constexpr char kFoldersDecoded[] = "Successfully decoded %ld folders from UserDefaults";
inline constexpr char kFoldersSaved[] = "Successfully saved %ld folders to UserDefaults";
inline constexpr char kHiddenRetrieved[] = "Retrieved %ld hidden apps";
inline constexpr char kHiddenHid[] = "Hidden app: %s";
inline constexpr char kHiddenShowed[] = "Showed app: %s";
inline constexpr char kHiddenCleanup[] = "🗑️ [CLEANUP] Removed %ld deleted apps from hidden list";
inline constexpr char kRecentCleanup[] = "🗑️ [CLEANUP] Removed %ld deleted apps from recently opened list";
inline constexpr char kWidgetsDecodeFailed[] = "[Widgets] Failed to decode widgets: %s";
inline constexpr char kWorkflowsNone[] = "No workflows data found";
inline constexpr char kWorkflowsDecodeFailed[] = "Failed to decode workflows: %s";
inline constexpr char kWorkflowsLoaded[] = "Loaded %ld workflows";
inline constexpr char kWorkflowsSaved[] = "Saved %ld workflows";

// System folders
inline constexpr char kSystemFoldersCached[] = "Returning cached categories: %ld";
inline constexpr char kSystemFoldersInFlight[] = "Scan already in flight, awaiting result…";
inline constexpr char kSystemFoldersScanEmpty[] = "Returning empty categories - manual folder selection only";
inline constexpr char kSystemFoldersPreWarm[] = "System folders pre-warming skipped - manual selection only";
inline constexpr char kSystemFolderBookmarkFailed[] = "Failed to resolve bookmark for opening folder: %s";

// Workflows
inline constexpr char kWorkflowNothingToLaunch[] = "Workflow '%s' has nothing to launch";
inline constexpr char kWorkflowAppNotFound[] = "Workflow app path not found in apps list: %s";
// isNew is written as the word true or false (pass "true"/"false").
inline constexpr char kWorkflowAdded[] = "Added workflow '%s' to standard and %ld Space(s) (isNew: %s)";

// Migrations
inline constexpr char kMigratedGlassStyle[] = "Migrated: set liquidGlassMaterialStyle to 'tinted' for existing user";
inline constexpr char kMigratedPinch[] = "Migrated: enabled Pinch to invoke once for all users";
inline constexpr char kMigratedSunBackground[] = "Migrated: set Sun Background defaults for existing user";
inline constexpr char kMigrationFailed[] = "Migration failed: %s";
inline constexpr char kMigratedBackgroundImage[] = "Migrated background image data to file: %s";
inline constexpr char kMigrationFoldersDecodeFailed[] = "Failed to decode folders for the slots migration: %s";
inline constexpr char kMigratingFolders[] = "Migrating folders to slots format";
inline constexpr char kMigratedFolders[] = "Successfully migrated %ld folders to slots format";
inline constexpr char kMigrationClearedActiveSpace[] = "Spaces: cleared activeSpaceId (no spaces list)";

// Spaces
inline constexpr char kSpacesDecodeFailed[] = "Failed to decode Spaces: %s";
inline constexpr char kSpacesEncodeFailed[] = "Failed to encode Spaces: %s";
inline constexpr char kSnapshotDecodeFailed[] = "Failed to decode snapshot for %s: %s";
inline constexpr char kSnapshotEncodeFailed[] = "Failed to encode snapshot for %s: %s";
inline constexpr char kRecoveredHiddenApps[] = "Recovered %ld hidden app(s) from live Space suite.";
inline constexpr char kRecoveredWallpaper[] = "Recovered missing active Space wallpaper from standard path.";
inline constexpr char kRecoverWallpaperFailed[] = "Failed to recover missing active Space wallpaper: %s";

// Wallpaper
inline constexpr char kWallpaperMissing[] = "Wallpaper file is missing, showing the desktop's wallpaper instead: %s";
inline constexpr char kWallpaperChosen[] = "Wallpaper chosen: %s";
inline constexpr char kBackdropUnreadable[] = "Backdrop image could not be read: %s";

// Theme packages
inline constexpr char kExportedTheme[] = "Exported theme %s: %lld bytes";
inline constexpr char kThemeUnzipFailed[] = "Theme unzip failed: %s";
inline constexpr char kImportedTheme[] = "Imported theme '%s': %ld/%ld apps matched, %ld icons pending";

}
