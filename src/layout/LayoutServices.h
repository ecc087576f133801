#pragma once

#include <memory>

class AppNameRepository;
class AppsCustomizationRepository;
class AppsRepository;
class FoldersRepository;
class HiddenAppsService;
class OrderRepository;
class RecentAppsService;
class UserDefaultsStoreType;
class WidgetsRepository;
class WorkflowsRepository;

// What the layout model reads and writes through. Every repository is
// required except those marked optional.
struct LayoutServices {
    // Optional: without a catalogue the stored layout is loaded and repaired
    // but not reconciled with installed applications (nothing is scanned,
    // so nothing is taken for uninstalled).
    std::shared_ptr<AppsRepository> appsRepo;
    std::shared_ptr<FoldersRepository> foldersRepo;
    std::shared_ptr<OrderRepository> orderRepo;
    std::shared_ptr<WidgetsRepository> widgetsRepo;
    std::shared_ptr<WorkflowsRepository> workflowsRepo;
    std::shared_ptr<HiddenAppsService> hiddenAppsService;
    // Optional: the recently opened apps, pruned with the hidden list.
    std::shared_ptr<RecentAppsService> recentAppsService;
    // Optional: custom names and icons, which follow an app that moved to
    // another path.
    std::shared_ptr<AppNameRepository> appNames;
    std::shared_ptr<AppsCustomizationRepository> appIcons;
    // Optional: the standard store, where the folder grid shape is kept.
    std::shared_ptr<UserDefaultsStoreType> preferences;
};
