#include "spaces/SpacesRepository.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/RecordList.h"
#include "foundation/Uuids.h"
#include "storage/KeptAside.h"
#include "storage/UserDefaultsStoreType.h"

#include <QJsonDocument>

SpacesRepositoryImpl::SpacesRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> mainStore)
    : m_store(std::move(mainStore))
{
}

QString SpacesRepositoryImpl::snapshotKey(const QUuid &space)
{
    return QLatin1String(kSnapshotPrefix) + Uuids::toText(space);
}

QList<SpaceItem> SpacesRepositoryImpl::loadSpaces() const
{
    const auto bytes = m_store->data(QLatin1String(kItemsKey));
    if (!bytes)
        return {};
    // A Space that does not decode costs only itself; it is kept aside
    // before the list is next saved.
    const auto decoded = RecordList::decodeEach<SpaceItem>(*bytes);
    if (!decoded.errors.isEmpty())
        qCWarning(lcSpaces, LogTexts::kSpacesDecodeFailed, qUtf8Printable(decoded.errors.join(QStringLiteral("; "))));
    return decoded.records;
}

void SpacesRepositoryImpl::saveSpaces(const QList<SpaceItem> &spaces)
{
    KeptAside::beforeSaving<SpaceItem>(*m_store, QLatin1String(kItemsKey));
    m_store->set(RecordList::encode(spaces), QLatin1String(kItemsKey));
}

std::optional<QJsonObject> SpacesRepositoryImpl::loadSnapshot(const QUuid &space) const
{
    const auto bytes = m_store->data(snapshotKey(space));
    if (!bytes)
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(*bytes, &error);
    if (!doc.isObject()) {
        qCWarning(lcSpaces, LogTexts::kSnapshotDecodeFailed, qUtf8Printable(Uuids::toText(space)),
                  qUtf8Printable(error.error != QJsonParseError::NoError ? error.errorString()
                                                                         : QStringLiteral("expected an object")));
        return std::nullopt;
    }
    return doc.object();
}

void SpacesRepositoryImpl::saveSnapshot(const QJsonObject &snapshot, const QUuid &space)
{
    m_store->set(QJsonDocument(snapshot).toJson(QJsonDocument::Compact), snapshotKey(space));
}

void SpacesRepositoryImpl::removeSnapshot(const QUuid &space)
{
    m_store->removeObject(snapshotKey(space));
}

std::optional<QUuid> SpacesRepositoryImpl::activeSpaceId() const
{
    const auto text = m_store->string(QLatin1String(kActiveSpaceIdKey));
    return text ? Uuids::fromText(*text) : std::nullopt;
}

void SpacesRepositoryImpl::setActiveSpaceId(std::optional<QUuid> id)
{
    if (id)
        m_store->set(Uuids::toText(*id), QLatin1String(kActiveSpaceIdKey));
    else
        m_store->removeObject(QLatin1String(kActiveSpaceIdKey));
}
