#pragma once

#include <QString>
#include <QVector>

class MCheckBox;
class MSpinBox;
class QComboBox;
class QLabel;
class QWidget;

// The pieces the pages made of collapsible sections build their section
// bodies from, so that the button and the comprehensive page look alike.
namespace SectionWidgets
{

// A section body: a dark panel on which captions and the drawn controls'
// white texts read well.
QWidget *panel(const QString &objectName);

QLabel *caption(const QString &text, QWidget *parent);

// A selector as wide as its longest item.
QComboBox *selector(QWidget *parent, const QString &name, int minWidth = 80);
// Widens a selector so that its longest item shows whole beside the arrow
// (the style sheet's frame is not counted by the selector itself).
void fitItems(QComboBox *selector);

MSpinBox *spinBox(QWidget *parent, const QString &name, double min, double max, int decimals = 0);

// An item of a radio group: it emits checkedChange(objectName) when clicked.
MCheckBox *radioItem(QWidget *parent, const QString &name, const QString &text);
MCheckBox *checkItem(QWidget *parent, const QString &name, const QString &text);

// The group's radio behaviour: the item named stays checked, the others go out.
void keepOnlyChecked(const QVector<MCheckBox *> &group, const QString &name);
// Index of the first checked item, -1 when none is.
int checkedIndex(const QVector<MCheckBox *> &group);

// The value the spin box shows (rounded to its decimals): held buttons add
// steps of 0.1 that drift below the shown value.
double shownValue(const MSpinBox *box);

// Selects index when the selector has it; otherwise leaves it as it is.
void selectIfValid(QComboBox *selector, int index);

} // namespace SectionWidgets
