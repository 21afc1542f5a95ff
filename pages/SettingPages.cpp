#include "SettingPages.h"

#include "ButtonConfig.h"
#include "ComprehensiveConfig.h"
#include "CustomConfig.h"
#include "SbusConfig.h"
#include "SbusHold.h"
#include "Sequences.h"

SettingPage *createSettingPage(int section, QWidget *parent)
{
    switch (section) {
    case SectionSbus1:
    case SectionSbus2:
        return new SbusConfig(parent);
    case SectionChannelHold:
        return new SbusHold(parent);
    case SectionButtons:
        return new ButtonConfig(parent);
    case SectionComprehensive:
        return new ComprehensiveConfig(parent);
    case SectionCustomOutput:
        return new CustomConfig(parent);
    default:
        return nullptr;
    }
}
