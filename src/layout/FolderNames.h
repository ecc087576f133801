#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The name a new folder gets from what its apps are: the main category of
// the desktop menu (freedesktop "Categories") that all of them share, most
// telling first, in the user's words ("Games", "Office"); "Folder" when they
// share none.
namespace FolderNames {
QString fromCategories(const QList<QStringList> &categoriesOfEachApp);
}
