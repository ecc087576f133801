#pragma once

#include <QLoggingCategory>

// One category per area, named after the bundle identifier, so a user can
// filter with QT_LOGGING_RULES="com.tillmora.Tillmora.persistence.debug=false".
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcPersistence)
Q_DECLARE_LOGGING_CATEGORY(lcServices)
Q_DECLARE_LOGGING_CATEGORY(lcLayout)
Q_DECLARE_LOGGING_CATEGORY(lcSpaces)

// Turns one category's debug output off for a scope: a move worked out on a
// copy (a drag preview) must not read in the log like a move that happened.
class ScopedDebugSilence {
public:
    // The categories are handed out const but are ordinary mutable statics.
    explicit ScopedDebugSilence(const QLoggingCategory &category)
        : m_category(const_cast<QLoggingCategory &>(category)), m_wasEnabled(category.isDebugEnabled())
    {
        m_category.setEnabled(QtDebugMsg, false);
    }
    ~ScopedDebugSilence() { m_category.setEnabled(QtDebugMsg, m_wasEnabled); }
    ScopedDebugSilence(const ScopedDebugSilence &) = delete;
    ScopedDebugSilence &operator=(const ScopedDebugSilence &) = delete;

private:
    QLoggingCategory &m_category;
    bool m_wasEnabled;
};
