#include "foundation/Logging.h"

Q_LOGGING_CATEGORY(lcApp, "com.tillmora.Tillmora.app")
Q_LOGGING_CATEGORY(lcPersistence, "com.tillmora.Tillmora.persistence")
Q_LOGGING_CATEGORY(lcServices, "com.tillmora.Tillmora.services")
Q_LOGGING_CATEGORY(lcLayout, "com.tillmora.Tillmora.layout")
Q_LOGGING_CATEGORY(lcSpaces, "com.tillmora.Tillmora.spaces")
