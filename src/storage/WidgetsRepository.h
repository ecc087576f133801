#pragma once

#include "foundation/WidgetItem.h"
#include "storage/SettingsKeys.h"

#include <QList>
#include <memory>

class FileSystemStore;
class UserDefaultsStoreType;

class WidgetsRepository {
public:
    virtual ~WidgetsRepository() = default;
    virtual QList<WidgetItem> load() const = 0;
    virtual void save(const QList<WidgetItem> &widgets) = 0;
};

// Widget records as one JSON list under "widgets_storage_v1".
class WidgetsRepositoryImpl final : public WidgetsRepository {
public:
    WidgetsRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store, std::shared_ptr<FileSystemStore> files,
                          QString key = QLatin1String(SettingsKeys::kWidgets));
    QList<WidgetItem> load() const override;
    void save(const QList<WidgetItem> &widgets) override;
    // Copies an image into "Widgets/" (replacing one of the same name) and
    // returns its new path, or nothing with *error set.
    std::optional<QString> copyImage(const QString &source, QString *error = nullptr) const;

private:
    std::shared_ptr<UserDefaultsStoreType> m_store;
    QString m_key;
    std::shared_ptr<FileSystemStore> m_files;
};
