<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="settings.spaces.conflict.alert">
        <source>Another Space already uses this shortcut. Choose a different one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.error.invalidStartTime">
        <source>The start time is not a valid time (HH:mm).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.error.invalidEndTime">
        <source>The end time is not a valid time (HH:mm).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.error.startAfterEnd">
        <source>The end time must be later than the start time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.createWithCurrentSettings">
        <source>Start with the current settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.createWithDefaultLayout">
        <source>Start with the default layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.mon">
        <source>Mon</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.tue">
        <source>Tue</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.wed">
        <source>Wed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.thu">
        <source>Thu</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.fri">
        <source>Fri</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.sat">
        <source>Sat</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.triggers.weekday.sun">
        <source>Sun</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.duplicate.title">
        <source>You imported this theme before</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.duplicate.message">
        <source>Importing it again adds another Space with the same look.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.duplicate.importButton">
        <source>Import Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.folders.title">
        <source>The theme has its own folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.folders.message">
        <source>Keep the folders you have, or take the theme&apos;s folders into the new Space?</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.folders.keepMine">
        <source>Keep My Folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.folders.useTheme">
        <source>Use the Theme&apos;s Folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.imported.title">
        <source>The theme is now a Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.imported.switchButton">
        <source>Switch Now</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.imported.laterButton">
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="settings.spaces.theme.mySpaces.empty">
        <source>No Spaces yet. Create a Space to save your current setup.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FolderIcon</name>
    <message>
        <source>Folder %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FolderPanel</name>
    <message>
        <source>Folder name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a folder from the disk</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FolderPresenter</name>
    <message>
        <source>New Folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HiddenAppsDialog</name>
    <message>
        <source>Hidden apps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No hidden apps</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ItemMenu</name>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dissolve folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove widget</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show hidden apps…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit workflow…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete workflow</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Overlay</name>
    <message>
        <source>Show hidden apps…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New workflow…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Space…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Themes…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OverlayWindow</name>
    <message>
        <source>Your changes are saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your changes could not be saved: %1. Tillmora keeps them and tries again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PageDots</name>
    <message>
        <source>Page %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.svg *.webp)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RenameDialog</name>
    <message>
        <source>Rename folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename app</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SearchResults</name>
    <message>
        <source>No results</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Tillmora Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show and hide Tillmora with</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcut; press to record a new one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press the new shortcut…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hot corner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Tillmora when I log in</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SpaceEditor</name>
    <message>
        <source>New Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcut (works while Tillmora is shown)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press the keys…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record shortcut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch to this Space by itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In a focus mode (not available here)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Every day</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove rule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>all day</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>+ Time range</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>+ Days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SpaceStrip</name>
    <message>
        <source>Standard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Space…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Themes…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SpacesPresenter</name>
    <message>
        <source>A Space needs a name.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SystemFolderStrip</name>
    <message>
        <source>%1 (missing)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a folder from the disk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>+
Add folder…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SystemFoldersPresenter</name>
    <message>
        <source>“%1” is no longer at %2. Put it back, or remove it from this folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a folder to put in “%1”</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThemeImportDialog</name>
    <message>
        <source>This theme cannot be imported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import “%1”?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” was added to your Spaces. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It becomes a new Space; your own setup stays as it is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThemesPanel</name>
    <message>
        <source>Themes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading the catalogue…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>My Spaces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThemesPresenter</name>
    <message>
        <source>%1 of %2 apps are installed here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The theme could not be imported: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” could not be exported: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved “%1” in %2 (%3 KB).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WidgetTile</name>
    <message>
        <source>Date widget</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clock widget</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WorkflowEditViewModel</name>
    <message>
        <source>Give the workflow a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose an image, or use an emoji.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The colour is not a hexadecimal colour such as #3478F6.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WorkflowEditor</name>
    <message>
        <source>New workflow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit workflow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name, e.g. Morning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plate colour %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause between items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installed apps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opens, in this order</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pick apps on the left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Then these folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WorkflowIcon</name>
    <message>
        <source>Workflow %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WorkflowsPresenter</name>
    <message>
        <source>%1 (not installed)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a folder to open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose an image for the icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not an image Tillmora can read.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
