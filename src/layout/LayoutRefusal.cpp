#include "layout/LayoutRefusal.h"

namespace LayoutRefusals {

QString describe(LayoutRefusal refusal)
{
    switch (refusal) {
    case LayoutRefusal::EmptyKey: return QStringLiteral("it is the empty key");
    case LayoutRefusal::MalformedKey: return QStringLiteral("it names no application");
    case LayoutRefusal::WidgetKey: return QStringLiteral("widgets are placed with moveWidget");
    case LayoutRefusal::AlreadyOnGrid: return QStringLiteral("it is already on the grid");
    case LayoutRefusal::NotOnGrid: return QStringLiteral("no cell of the grid holds it");
    case LayoutRefusal::InFolder: return QStringLiteral("it is inside a folder");
    case LayoutRefusal::Hidden: return QStringLiteral("it is hidden");
    case LayoutRefusal::AlreadyHidden: return QStringLiteral("it is already hidden");
    case LayoutRefusal::NotHidden: return QStringLiteral("it is not hidden");
    case LayoutRefusal::UnknownApp: return QStringLiteral("no installed application has that path");
    case LayoutRefusal::UnknownFolder: return QStringLiteral("no folder has that id");
    case LayoutRefusal::UnknownWorkflow: return QStringLiteral("no workflow has that id");
    case LayoutRefusal::UnknownWidget: return QStringLiteral("no widget has that id");
    case LayoutRefusal::NotInFolder: return QStringLiteral("it is not in that folder");
    case LayoutRefusal::NoMembers: return QStringLiteral("a folder needs at least one app or system folder");
    case LayoutRefusal::InvalidName: return QStringLiteral("the name is blank");
    case LayoutRefusal::WidgetArea: return QStringLiteral("the cell belongs to a widget");
    case LayoutRefusal::Full: return QStringLiteral("no page of the grid can hold it");
    }
    return QStringLiteral("refused");
}

}
