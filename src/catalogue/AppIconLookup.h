#pragma once

#include "catalogue/AppSource.h"

#include <QIcon>
#include <QList>
#include <memory>

// The icon of an installed application, by its path. Icons are not part of
// AppItem; the overlay asks for them when it draws.
class AppIconLookup {
public:
    virtual ~AppIconLookup() = default;
    // A null icon when the application names none that can be found.
    virtual QIcon icon(const QString &appPath) const = 0;
};

// Bundles: the icon file named by the bundle's Info.plist. Other sources: the
// file or icon-theme name they report. Theme names are looked up with search
// paths set here from the XDG folders, because Qt's own defaults differ from
// one desktop to the next. Use on the GUI thread.
class AppIconLookupImpl final : public AppIconLookup {
public:
    explicit AppIconLookupImpl(QList<std::shared_ptr<AppSource>> sources);

    QIcon icon(const QString &appPath) const override;

    // The folders searched for icon themes and for unthemed icons, most
    // important first.
    static QStringList themeSearchPaths();
    static QStringList fallbackSearchPaths();

private:
    static QIcon resolve(const AppIconReference &reference);

    QList<std::shared_ptr<AppSource>> m_sources;
};
