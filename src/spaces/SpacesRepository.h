#pragma once

#include "spaces/SpaceItem.h"

#include <QJsonObject>
#include <memory>

class UserDefaultsStoreType;

// The Spaces list, their snapshots and the active Space's id, all in the
// main store.
class SpacesRepository {
public:
    virtual ~SpacesRepository() = default;
    virtual QList<SpaceItem> loadSpaces() const = 0;
    virtual void saveSpaces(const QList<SpaceItem> &spaces) = 0;
    virtual std::optional<QJsonObject> loadSnapshot(const QUuid &space) const = 0;
    virtual void saveSnapshot(const QJsonObject &snapshot, const QUuid &space) = 0;
    virtual void removeSnapshot(const QUuid &space) = 0;
    virtual std::optional<QUuid> activeSpaceId() const = 0;
    virtual void setActiveSpaceId(std::optional<QUuid> id) = 0;
};

class SpacesRepositoryImpl final : public SpacesRepository {
public:
    static constexpr const char *kItemsKey = "Spaces_Items_v1";
    static constexpr const char *kActiveSpaceIdKey = "Spaces_ActiveSpaceId";
    static constexpr const char *kSnapshotPrefix = "Spaces_Snapshot_";

    explicit SpacesRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> mainStore);

    static QString snapshotKey(const QUuid &space);

    QList<SpaceItem> loadSpaces() const override;
    void saveSpaces(const QList<SpaceItem> &spaces) override;
    std::optional<QJsonObject> loadSnapshot(const QUuid &space) const override;
    void saveSnapshot(const QJsonObject &snapshot, const QUuid &space) override;
    void removeSnapshot(const QUuid &space) override;
    std::optional<QUuid> activeSpaceId() const override;
    void setActiveSpaceId(std::optional<QUuid> id) override;

private:
    std::shared_ptr<UserDefaultsStoreType> m_store;
};
