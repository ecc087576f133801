#pragma once

#include <QObject>

// Whether Tillmora is the application the user works in, and when it
// becomes so. Space hotkeys act only while it is active; the hot corners
// re-check their motion source whenever it becomes active.
class ApplicationActivity : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual bool isActive() const = 0;

Q_SIGNALS:
    void becameActive();
};

// Follows QGuiApplication's application state; inactive without one.
class QtApplicationActivity final : public ApplicationActivity {
    Q_OBJECT
public:
    explicit QtApplicationActivity(QObject *parent = nullptr);
    bool isActive() const override;
};
