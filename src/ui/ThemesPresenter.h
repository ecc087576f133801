#pragma once

#include "spaces/SpacesThemeCatalogViewModel.h"
#include "spaces/ThemeImporter.h"

#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>
#include <memory>
#include <optional>

struct CompositionRoot;
class LaunchpadViewModel;
class SpacesViewModel;

// The catalogue's model lives below the UI, which registers it for QML.
struct SpacesThemeCatalogViewModelForeign {
    Q_GADGET
    QML_FOREIGN(SpacesThemeCatalogViewModel)
    QML_NAMED_ELEMENT(SpacesThemeCatalogViewModel)
    QML_UNCREATABLE("Held by the ThemesPresenter")
};

// The Themes panel and the import of a package: the online catalogue, the
// user's own Spaces to export, and the questions an import asks (a theme
// imported before, folders that differ, switching to the new Space).
class ThemesPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of the GridPresenter")
    Q_PROPERTY(bool available READ available NOTIFY availableChanged)
    Q_PROPERTY(SpacesThemeCatalogViewModel *catalog READ catalog NOTIFY availableChanged)
    // Each: {id, name, emoji, color}.
    Q_PROPERTY(QVariantList mySpaces READ mySpaces NOTIFY mySpacesChanged)
    // The alert up, by its kind's name ("duplicate", "folderChoice",
    // "imported", "outdated", "invalidPackage", "exportConfirm",
    // "exportFailed"), or "" for none.
    Q_PROPERTY(QString stage READ stage NOTIFY importChanged)
    // {name, emoji, color, summary, error} of the package or Space it is about.
    Q_PROPERTY(QVariantMap package READ package NOTIFY importChanged)
public:
    explicit ThemesPresenter(QObject *parent = nullptr);
    ~ThemesPresenter() override;

    void attach(SpacesViewModel *spaces, LaunchpadViewModel *layout, CompositionRoot *composition);

    bool available() const { return m_spaces != nullptr; }
    SpacesThemeCatalogViewModel *catalog() const { return m_catalog.get(); }
    QVariantList mySpaces() const;
    QString stage() const { return m_stage; }
    QVariantMap package() const { return m_package; }

    // Reads the package and asks what it must; nothing changes yet.
    Q_INVOKABLE void openPackage(const QString &file);
    Q_INVOKABLE void importAgain();
    Q_INVOKABLE void chooseFolders(bool keepMine);
    Q_INVOKABLE void switchToImported();
    Q_INVOKABLE void closeImport();
    // Asks, then writes the Space's package into the Documents folder and
    // says where.
    Q_INVOKABLE void exportSpace(const QString &id);
    Q_INVOKABLE void confirmExport();
    Q_INVOKABLE QString text(const QString &messageId) const;

Q_SIGNALS:
    void availableChanged();
    void mySpacesChanged();
    void importChanged();
    void notice(const QString &text);

private:
    void raise(std::optional<ThemeAlertKind> alert);
    QString exportFolder() const;
    QString appsSummary(int matched, int total) const;
    void importWith(ThemeImporter::FolderChoice choice);
    void takeInspection(ThemeImporter::Inspection inspection);
    ThemeImporter importer() const;

    QPointer<SpacesViewModel> m_spaces;
    QPointer<LaunchpadViewModel> m_layout;
    CompositionRoot *m_composition = nullptr;
    std::unique_ptr<SpacesThemeCatalogViewModel> m_catalog;
    std::optional<ThemeImporter::Inspection> m_inspection;
    QString m_importedId;
    QString m_exportingId;
    QString m_stage;
    QVariantMap m_package;
};
