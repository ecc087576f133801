#pragma once

#include <QJsonObject>
#include <QString>
#include <QUuid>
#include <memory>

class FileSystemStore;
class UserDefaultsStoreType;

// The portable copy of one layout profile (a JSON object whose keys are the
// snapshot's field names) and the moves between it and a settings store.
class SpacesSnapshotService {
public:
    static constexpr const char *kStandardBackgroundBackupKey = "Spaces_StandardDynamicBackgroundBackup_v1";
    static constexpr const char *kStandardGlassBackupKey = "Spaces_StandardGlassBackup_v1";

    // One field of the snapshot and the store key it carries.
    struct Field {
        const char *name;
        const char *key;
        enum Kind { Plain, Data, Date, PerDisplay } kind;
    };
    static const QList<Field> &fields();

    // mainStore: the standard profile's store, which also names the display
    // the per-display appearance belongs to.
    SpacesSnapshotService(std::shared_ptr<UserDefaultsStoreType> mainStore, std::shared_ptr<FileSystemStore> files);

    // The Space's own folder for the files its settings point to.
    QString assetFolder(const QUuid &space) const;

    QJsonObject capture(const UserDefaultsStoreType &store) const;
    // Writes every field the snapshot holds; a field it lacks leaves the key
    // as it is. A relative file reference resolves in assetFolder.
    void apply(const QJsonObject &snapshot, UserDefaultsStoreType &store, const QString &assetFolder) const;
    // Copies the files a captured snapshot points to (wallpaper, custom icons)
    // into the Space's asset folder and points the snapshot at the copies, so
    // no profile's files are ever another profile's to delete.
    void adoptFiles(QJsonObject &snapshot, const QString &assetFolder) const;

    // Leaving and coming back to the standard profile.
    void backUpStandard();
    void restoreStandard();

    // Adds to the snapshot what the live suite hides but the snapshot does
    // not (never un-hides); returns how many.
    long recoverHiddenApps(QJsonObject &snapshot, const UserDefaultsStoreType &liveSuite) const;
    // Points the active Space at a copy of the standard wallpaper when its
    // own file is gone and the standard one is still there.
    void recoverActiveWallpaper(UserDefaultsStoreType &spaceStore, const QString &assetFolder) const;

private:
    QString displayKey(const char *base) const;

    std::shared_ptr<UserDefaultsStoreType> m_store;
    std::shared_ptr<FileSystemStore> m_files;
};
