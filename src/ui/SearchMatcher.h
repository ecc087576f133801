#pragma once

#include <QList>
#include <QString>

// Matching typed text against app names, forgiving case and accents:
// "cafe" finds "Café", "term" finds "GNOME Terminal", "vsc" finds "Visual
// Studio Code" by its word starts. Lower scores rank first; nothing means no
// match.
namespace SearchMatcher {

// Lower-cased, accents removed, punctuation turned into spaces.
QString fold(const QString &text);
std::optional<int> score(const QString &query, const QString &name);

struct Candidate {
    QString key;
    QString name;
};
// The matching candidates, best first; ties keep name order.
QList<Candidate> rank(const QString &query, const QList<Candidate> &candidates);

}
