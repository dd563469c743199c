#include "resources.h"

#include <QDir>

void initResources()
{
    Q_INIT_RESOURCE(kelmoran);
}
