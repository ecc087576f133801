#include "ui/FallbackFileChooser.h"

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QWindow>

bool FallbackFileChooser::choose(Kind kind, const QString &title, Chosen chosen)
{
    QFileDialog dialog(nullptr, title, QDir::homePath());
    if (kind == Kind::Folder) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog.setFileMode(QFileDialog::ExistingFile);
        dialog.setNameFilter(QObject::tr("Images (*.png *.jpg *.jpeg *.svg *.webp)"));
    }
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    dialog.winId(); // makes the native window, so it can be given a parent
    if (QWindow *overlay = QGuiApplication::focusWindow(); overlay && dialog.windowHandle())
        dialog.windowHandle()->setTransientParent(overlay);
    const bool accepted = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    chosen(accepted ? dialog.selectedFiles().first() : QString());
    return true;
}

void FallbackFileChooser::chooseWith(FileChooser *preferred, Kind kind, const QString &title, Chosen chosen)
{
    if (preferred && preferred->choose(kind, title, chosen))
        return;
    FallbackFileChooser().choose(kind, title, std::move(chosen));
}
