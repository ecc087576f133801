#include "catalogue/ExclusionRules.h"

namespace ExclusionRules {

bool mentionsLauncher(QStringView text)
{
    for (const char16_t *word : {u"tillmora", u"launchpad", u"launcher"})
        if (text.contains(QStringView(word), Qt::CaseInsensitive))
            return true;
    return false;
}

}
