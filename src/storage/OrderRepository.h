#pragma once

#include <QStringList>
#include <memory>

class UserDefaultsStoreType;

class OrderRepository {
public:
    virtual ~OrderRepository() = default;
    virtual QStringList appOrder() const = 0;
    virtual void setAppOrder(const QStringList &order) = 0;
    virtual QStringList folderOrder() const = 0;
    virtual void setFolderOrder(const QStringList &order) = 0;
    virtual QStringList combinedOrder() const = 0;
    virtual void setCombinedOrder(const QStringList &order) = 0;
    // The main grid's slot list.
    virtual QStringList slots() const = 0;
    virtual void setSlots(const QStringList &slots) = 0;
};

// Ordered lists of text; a missing key reads as an empty list.
class OrderRepositoryImpl final : public OrderRepository {
public:
    explicit OrderRepositoryImpl(std::shared_ptr<UserDefaultsStoreType> store);
    QStringList appOrder() const override;
    void setAppOrder(const QStringList &order) override;
    QStringList folderOrder() const override;
    void setFolderOrder(const QStringList &order) override;
    QStringList combinedOrder() const override;
    void setCombinedOrder(const QStringList &order) override;
    QStringList slots() const override;
    void setSlots(const QStringList &slots) override;

private:
    QStringList read(const char *key) const;
    void write(const char *key, const QStringList &list);

    std::shared_ptr<UserDefaultsStoreType> m_store;
};
