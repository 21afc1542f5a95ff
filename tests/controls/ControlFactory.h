#pragma once

#include "CtlButton.h"
#include "Dial.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "PhaseSwitch.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QString>
#include <QWidget>

// Builds a drawn control from its class name, so tables can name the control
// they are about.
inline QWidget *makeControl(const QString &name)
{
    if (name == QLatin1String("SbusChannel"))
        return new SbusChannel;
    if (name == QLatin1String("Switch"))
        return new Switch;
    if (name == QLatin1String("Rocker"))
        return new Rocker;
    if (name == QLatin1String("Dial"))
        return new Dial;
    if (name == QLatin1String("RotaryKnob"))
        return new RotaryKnob;
    if (name == QLatin1String("SteeringWheel"))
        return new SteeringWheel(nullptr, 0);
    if (name == QLatin1String("CtlButton"))
        return new CtlButton;
    if (name == QLatin1String("PhaseSwitch"))
        return new PhaseSwitch;
    if (name == QLatin1String("MCheckBox"))
        return new MCheckBox;
    if (name == QLatin1String("MSpinBox"))
        return new MSpinBox;
    return nullptr;
}
