#pragma once

#include "catalogue/AppSource.h"

#include <QMap>

// A source with a fixed list of applications and icons.
class FakeAppSource final : public AppSource {
public:
    QList<AppItem> items;
    QStringList directories;
    QMap<QString, AppIconReference> icons;

    QList<AppItem> fetch() const override { return items; }
    QStringList watchedDirectories() const override { return directories; }
    std::optional<AppIconReference> iconReference(const QString &appPath) const override
    {
        const auto it = icons.constFind(appPath);
        return it == icons.cend() ? std::nullopt : std::optional<AppIconReference>(*it);
    }
};
