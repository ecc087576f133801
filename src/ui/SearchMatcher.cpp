#include "ui/SearchMatcher.h"

#include <QCollator>
#include <QStringList>
#include <algorithm>

namespace SearchMatcher {

QString fold(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() == QChar::Mark_NonSpacing || c.category() == QChar::Mark_Enclosing)
            continue;
        out += c.isLetterOrNumber() ? c.toCaseFolded() : QChar(u' ');
    }
    return out.simplified();
}

static QString initials(const QStringList &words)
{
    QString out;
    for (const QString &w : words)
        out += w.front();
    return out;
}

std::optional<int> score(const QString &query, const QString &name)
{
    const QString q = fold(query);
    if (q.isEmpty())
        return std::nullopt;
    const QString n = fold(name);
    if (n.startsWith(q))
        return 0;
    const QStringList words = n.split(u' ', Qt::SkipEmptyParts);
    // Every query word must start some word of the name ("stu co" → "Visual Studio Code").
    const QStringList parts = q.split(u' ', Qt::SkipEmptyParts);
    const bool allPartsStartWords = std::all_of(parts.cbegin(), parts.cend(), [&](const QString &part) {
        return std::any_of(words.cbegin(), words.cend(), [&](const QString &w) { return w.startsWith(part); });
    });
    if (allPartsStartWords)
        return 1;
    if (!q.contains(u' ') && q.size() >= 2 && initials(words).startsWith(q))
        return 2;
    if (n.contains(q))
        return 3;
    return std::nullopt;
}

QList<Candidate> rank(const QString &query, const QList<Candidate> &candidates)
{
    struct Scored {
        int score;
        Candidate candidate;
    };
    QList<Scored> hits;
    for (const Candidate &c : candidates)
        if (const auto s = score(query, c.name))
            hits.append({*s, c});
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(hits.begin(), hits.end(), [&](const Scored &a, const Scored &b) {
        if (a.score != b.score)
            return a.score < b.score;
        return collator.compare(a.candidate.name, b.candidate.name) < 0;
    });
    QList<Candidate> out;
    for (const Scored &s : hits)
        out.append(s.candidate);
    return out;
}

}
