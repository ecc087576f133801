#pragma once

#include <QLoggingCategory>

// One category per area, named after the bundle identifier, so a user can
// filter with QT_LOGGING_RULES="com.tillmora.Tillmora.persistence.debug=false".
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcPersistence)
Q_DECLARE_LOGGING_CATEGORY(lcServices)
Q_DECLARE_LOGGING_CATEGORY(lcLayout)
