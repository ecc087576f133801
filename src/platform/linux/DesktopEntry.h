#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The part of a desktop entry file the catalogue uses, read with GLib's key
// file parser (the one GIO uses) but without GIO's application index, which
// costs a look through every known entry per file.
struct DesktopEntry {
    QString name;             // Name, in the first of the given languages that has one
    QString untranslatedName; // Name as written
    QString icon;             // Icon, localized the same way
    bool hidden = false;      // Hidden: the entry is deleted, and masks the id below it
    bool noDisplay = false;
    QStringList onlyShowIn;
    QStringList notShowIn;
    // The programs that must be installed for the entry to count: TryExec,
    // then the first word of Exec (either may be missing).
    QList<QByteArray> programs;

    // A pure function of the bytes: nothing unless they are a key file whose
    // first group is "Desktop Entry", of Type=Application, with an Exec line
    // that parses. languages: most wanted first, as g_get_language_names()
    // gives them ("de_DE.UTF-8", "de_DE", "de", "C").
    static std::optional<DesktopEntry> parse(const QByteArray &bytes, const QList<QByteArray> &languages);

    // Whether the desktops of the session (XDG_CURRENT_DESKTOP, in order) show
    // it, by OnlyShowIn and NotShowIn as GIO decides.
    bool shownIn(const QStringList &desktops) const;
};
