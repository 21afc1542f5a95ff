#include "RadioResources.h"

#include <QtGlobal>

void initRadioResources()
{
    Q_INIT_RESOURCE(radio_icons);
}
