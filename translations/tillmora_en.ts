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
</context>
<context>
    <name>Overlay</name>
    <message>
        <source>Show hidden apps…</source>
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
    <name>WorkflowIcon</name>
    <message>
        <source>Workflow %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
