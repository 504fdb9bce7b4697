#include "exampleresources.h"

#include <QtGlobal>

void initExampleResources()
{
    Q_INIT_RESOURCE(exampleresources);
}
