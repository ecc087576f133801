#include "ui/HiddenAppsPresenter.h"

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "ui/CellFactory.h"

#include <QCollator>
#include <QFileInfo>

HiddenAppsPresenter::HiddenAppsPresenter(LaunchpadViewModel &layout, const CellFactory &cells, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_cells(cells)
{
    rebuild();
}

void HiddenAppsPresenter::hide(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    if (!path.isEmpty())
        m_layout.hideApp(path);
    rebuild();
}

void HiddenAppsPresenter::unhide(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    if (!path.isEmpty())
        m_layout.unhideApp(path);
    rebuild();
}

void HiddenAppsPresenter::rebuild()
{
    QList<AppListModel::Entry> entries;
    for (const QString &path : m_layout.hiddenApps()) {
        QString title = QFileInfo(path).completeBaseName();
        if (const auto entry = m_layout.resolve(SlotKey::app(path)))
            title = m_cells.appTitle(std::get<AppItem>(*entry));
        entries.append({SlotKey::app(path), title, path});
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(entries.begin(), entries.end(),
              [&](const auto &a, const auto &b) { return collator.compare(a.title, b.title) < 0; });
    m_apps.setEntries(entries);
}
