#include "spaces/ThemeAppMatcher.h"

#include "foundation/SlotKey.h"
#include "spaces/ThemePathRewriter.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QSet>

namespace {

// Grid keys and list entries that name an app: absolute paths, bare or "A:".
QString appPathOf(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    return path.startsWith(u'/') ? path : QString();
}

QString identityOf(const QString &themePath, const QJsonObject &exported)
{
    const QString identity = exported.value(themePath).toObject().value(QLatin1String("identity")).toString();
    if (!identity.isEmpty())
        return identity;
    // A desktop entry's file name is its id when it sits at the top of its
    // applications folder, which is where nearly all of them sit.
    return themePath.endsWith(QLatin1String(".desktop")) ? QFileInfo(themePath).fileName() : QString();
}

const char *const kListFields[] = {"appOrder", "combinedOrder", "hiddenApps", "recentApps"};

// App paths in the order first met, each once.
struct AppPaths {
    QStringList paths;
    QSet<QString> seen;
    void add(const QString &key)
    {
        const QString path = appPathOf(key);
        if (!path.isEmpty() && !seen.contains(path)) {
            seen.insert(path);
            paths.append(path);
        }
    }
    void addAll(const QJsonValue &list)
    {
        for (const QJsonValue &key : list.toArray())
            add(key.toString());
    }
};

void addPlaced(AppPaths &out, const QJsonObject &snapshot)
{
    out.addAll(snapshot.value(QLatin1String("slots")));
    for (const QJsonValue &folder : ThemePathRewriter::dataField(snapshot, "foldersData").array()) {
        out.addAll(folder.toObject().value(QLatin1String("appPaths")));
        out.addAll(folder.toObject().value(QLatin1String("slots")));
    }
}

}

ThemeAppMatcher::ThemeAppMatcher(const QList<AppItem> &installed, const QStringList &themePaths,
                                 const QJsonObject &exported)
{
    QHash<QString, const AppItem *> byPath;
    QHash<QString, const AppItem *> byIdentity;
    QHash<QString, const AppItem *> byName;
    for (const AppItem &app : installed) {
        byPath.insert(app.path, &app);
        if (!app.identity.isEmpty() && !byIdentity.contains(app.identity))
            byIdentity.insert(app.identity, &app);
        const QString name = app.displayName.toCaseFolded();
        if (!name.isEmpty() && !byName.contains(name))
            byName.insert(name, &app);
    }
    QSet<QString> taken;
    const auto pass = [&](const std::function<const AppItem *(const QString &)> &find) {
        for (const QString &path : themePaths) {
            if (m_matches.contains(path))
                continue;
            const AppItem *app = find(path);
            if (app && !taken.contains(app->path)) {
                m_matches.insert(path, app->path);
                taken.insert(app->path);
            }
        }
    };
    pass([&](const QString &path) { return byPath.value(path); });
    pass([&](const QString &path) { return byIdentity.value(identityOf(path, exported)); });
    pass([&](const QString &path) {
        return byName.value(exported.value(path).toObject().value(QLatin1String("name")).toString().toCaseFolded());
    });
}

std::optional<QString> ThemeAppMatcher::localPath(const QString &themePath) const
{
    const auto it = m_matches.constFind(themePath);
    return it == m_matches.constEnd() ? std::nullopt : std::optional<QString>(*it);
}

int ThemeAppMatcher::matchedCount(const QStringList &themePaths) const
{
    return int(std::count_if(themePaths.cbegin(), themePaths.cend(),
                             [this](const QString &path) { return m_matches.contains(path); }));
}

QJsonObject ThemeAppMatcher::describe(const QStringList &paths, const QList<AppItem> &installed)
{
    QHash<QString, const AppItem *> byPath;
    for (const AppItem &app : installed)
        byPath.insert(app.path, &app);
    QJsonObject apps;
    for (const QString &path : paths)
        if (const AppItem *app = byPath.value(path))
            apps.insert(path, QJsonObject{{"identity", app->identity}, {"name", app->displayName}});
    return apps;
}

QStringList ThemeAppMatcher::placedAppPaths(const QJsonObject &snapshot)
{
    AppPaths out;
    addPlaced(out, snapshot);
    return out.paths;
}

QStringList ThemeAppMatcher::allAppPaths(const QJsonObject &snapshot)
{
    AppPaths out;
    addPlaced(out, snapshot);
    for (const char *field : kListFields)
        out.addAll(snapshot.value(QLatin1String(field)));
    for (const QString &key : ThemePathRewriter::dataField(snapshot, "customAppIconsData").object().keys())
        out.add(key);
    for (const QJsonValue &workflow : ThemePathRewriter::dataField(snapshot, "workflowsData").array())
        out.addAll(workflow.toObject().value(QLatin1String("appPaths")));
    return out.paths;
}

QJsonObject ThemeAppMatcher::mapAppPaths(const QJsonObject &snapshot,
                                         const std::function<std::optional<QString>(const QString &)> &map)
{
    QJsonObject result = snapshot;
    // Grid cells keep their place (an app not here leaves a free cell the
    // slot filler may use); lists just lose the entry.
    const auto mapList = [&](const QJsonArray &list, bool keepPlaces) {
        QJsonArray mapped;
        for (const QJsonValue &value : list) {
            const QString key = value.toString();
            const QString path = appPathOf(key);
            if (path.isEmpty()) {
                mapped.append(value);
                continue;
            }
            const auto local = map(path);
            if (local)
                mapped.append(key.startsWith(SlotKey::kAppPrefix) ? SlotKey::app(*local) : *local);
            else if (keepPlaces)
                mapped.append(QString());
        }
        return mapped;
    };
    if (snapshot.contains(QLatin1String("slots")))
        result.insert(QLatin1String("slots"), mapList(snapshot.value(QLatin1String("slots")).toArray(), true));
    for (const char *field : kListFields)
        if (snapshot.contains(QLatin1String(field)))
            result.insert(QLatin1String(field), mapList(snapshot.value(QLatin1String(field)).toArray(), false));

    if (snapshot.contains(QLatin1String("customAppIconsData"))) {
        const QJsonObject icons = ThemePathRewriter::dataField(snapshot, "customAppIconsData").object();
        QJsonObject mapped;
        for (auto it = icons.begin(); it != icons.end(); ++it)
            if (const auto local = map(it.key()))
                mapped.insert(*local, it.value());
        ThemePathRewriter::setDataField(result, "customAppIconsData", QJsonDocument(mapped));
    }
    if (snapshot.contains(QLatin1String("workflowsData"))) {
        QJsonArray workflows = ThemePathRewriter::dataField(snapshot, "workflowsData").array();
        for (qsizetype i = 0; i < workflows.size(); ++i) {
            QJsonObject workflow = workflows.at(i).toObject();
            workflow.insert(QLatin1String("appPaths"), mapList(workflow.value(QLatin1String("appPaths")).toArray(), false));
            workflows[i] = workflow;
        }
        ThemePathRewriter::setDataField(result, "workflowsData", QJsonDocument(workflows));
    }
    return result;
}
