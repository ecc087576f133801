#include "storage/OrderRepository.h"

#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStoreType.h"

OrderRepositoryImpl::OrderRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store)
    : m_store(std::move(store))
{
}

QStringList OrderRepositoryImpl::read(const char *key) const
{
    return m_store->stringList(QLatin1String(key));
}

void OrderRepositoryImpl::write(const char *key, const QStringList &list)
{
    m_store->set(list, QLatin1String(key));
}

QStringList OrderRepositoryImpl::appOrder() const { return read(SettingsKeys::kAppOrder); }
void OrderRepositoryImpl::setAppOrder(const QStringList &order) { write(SettingsKeys::kAppOrder, order); }
QStringList OrderRepositoryImpl::folderOrder() const { return read(SettingsKeys::kFolderOrder); }
void OrderRepositoryImpl::setFolderOrder(const QStringList &order) { write(SettingsKeys::kFolderOrder, order); }
QStringList OrderRepositoryImpl::combinedOrder() const { return read(SettingsKeys::kCombinedOrder); }
void OrderRepositoryImpl::setCombinedOrder(const QStringList &order) { write(SettingsKeys::kCombinedOrder, order); }
QStringList OrderRepositoryImpl::slots() const { return read(SettingsKeys::kSlots); }
void OrderRepositoryImpl::setSlots(const QStringList &slots)
{
    // Empty cells after the last occupied one say nothing (a shorter list
    // reads the same), so a page left empty at the end is not kept.
    qsizetype end = slots.size();
    while (end > 0 && slots.at(end - 1).isEmpty())
        --end;
    write(SettingsKeys::kSlots, end == slots.size() ? slots : slots.first(end));
}
