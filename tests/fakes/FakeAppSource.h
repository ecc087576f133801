#pragma once

#include "catalogue/AppSource.h"

#include <QMap>

// A source with a fixed list of applications and icons; it vouches for no
// folder.
class FakeAppSource final : public AppSource {
public:
    QList<AppItem> items;
    QStringList directories;
    QMap<QString, AppIconReference> icons;

    AppScan scan() const override
    {
        AppScan scan;
        for (const AppItem &item : items)
            scan.add(item);
        return scan;
    }
    QStringList watchedDirectories() const override { return directories; }
    std::optional<AppIconReference> iconReference(const QString &appPath) const override
    {
        const auto it = icons.constFind(appPath);
        return it == icons.cend() ? std::nullopt : std::optional<AppIconReference>(*it);
    }
};
