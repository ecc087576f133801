#include "app/RegisteredDefaults.h"

#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

namespace RegisteredDefaults {

QVariantMap firstBatch()
{
    return {{SettingsKeys::kBlurEnabled, true},
            {SettingsKeys::kFilledBackgroundEnabled, false},
            {SettingsKeys::kCellBackgroundEnabled, false},
            {SettingsKeys::kShowOverFullscreenEnabled, true}};
}

QVariantMap secondBatch()
{
    return {{SettingsKeys::kClassicViewEnabled, true},
            {SettingsKeys::kShowHideButtonEnabled, false},
            {SettingsKeys::kSearchLocation, QStringLiteral("center")},
            {SettingsKeys::kClassicViewAutoConfigDone, true},
            {SettingsKeys::kShowCategoriesAsMainPage, false},
            {SettingsKeys::kGesturePinchEnabled, true},
            {SettingsKeys::kGesturePinchFingerCount, 4}};
}

void registerAll()
{
    UserDefaultsStore::registerDefaults(firstBatch());
    UserDefaultsStore::registerDefaults(secondBatch());
}

}
