#include "app/RegisteredDefaults.h"

#include "storage/UserDefaultsStore.h"

namespace RegisteredDefaults {

QVariantMap firstBatch()
{
    return {{"blurEnabled", true},
            {"filledBackgroundEnabled", false},
            {"cellBackgroundEnabled", false},
            {"ShowOverFullscreenEnabled", true}};
}

QVariantMap secondBatch()
{
    return {{"ClassicViewEnabled", true},
            {"ShowHideButtonEnabled", false},
            {"SearchLocation", QStringLiteral("center")},
            {"ClassicViewAutoConfigDone", true},
            {"ShowCategoriesAsMainPage", false},
            {"gesture.pinch.enabled", true},
            {"gesture.pinch.fingerCount", 4}};
}

void registerAll()
{
    UserDefaultsStore::registerDefaults(firstBatch());
    UserDefaultsStore::registerDefaults(secondBatch());
}

}
