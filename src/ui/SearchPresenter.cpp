#include "ui/SearchPresenter.h"

#include "layout/LaunchpadViewModel.h"
#include "foundation/SlotKey.h"
#include "ui/ActivationPresenter.h"
#include "ui/CellFactory.h"
#include "ui/SearchMatcher.h"

SearchPresenter::SearchPresenter(LaunchpadViewModel &layout, const CellFactory &cells,
                                 ActivationPresenter &activation, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_cells(cells)
    , m_activation(activation)
{
}

void SearchPresenter::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    rebuild();
    Q_EMIT textChanged();
}

void SearchPresenter::activateResult(int index)
{
    const auto &entries = m_results.entries();
    if (index >= 0 && index < entries.size())
        m_activation.activate(entries.at(index).key);
}

void SearchPresenter::rebuild()
{
    QList<AppListModel::Entry> entries;
    if (!m_text.trimmed().isEmpty()) {
        const QSet<QString> hidden = m_layout.hiddenApps();
        QList<SearchMatcher::Candidate> candidates;
        for (const AppItem &app : m_layout.apps())
            if (!hidden.contains(app.path))
                candidates.append({SlotKey::app(app.path), m_cells.appTitle(app)});
        for (const auto &hit : SearchMatcher::rank(m_text, candidates))
            entries.append({hit.key, hit.name, SlotKey::appPath(hit.key)});
    }
    m_results.setEntries(entries);
}
