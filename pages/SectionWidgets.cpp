#include "SectionWidgets.h"

#include "MCheckBox.h"
#include "MSpinBox.h"

#include <QComboBox>
#include <QLabel>
#include <QtMath>

namespace SectionWidgets
{

QWidget *panel(const QString &objectName)
{
    auto *body = new QWidget;
    body->setObjectName(objectName);
    body->setAttribute(Qt::WA_StyledBackground);
    body->setStyleSheet(QStringLiteral("QWidget#%1 { background-color: rgb(70, 70, 70); border-radius: 6px; }"
                                       " QLabel { color: rgb(235, 235, 235); }")
                            .arg(objectName));
    return body;
}

QLabel *caption(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return label;
}

QComboBox *selector(QWidget *parent, const QString &name, int minWidth)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    box->setMinimumWidth(minWidth);
    return box;
}

MSpinBox *spinBox(QWidget *parent, const QString &name, double min, double max, int decimals)
{
    auto *box = new MSpinBox(parent);
    box->setObjectName(name);
    box->setM_minValue(min);
    box->setM_maxValue(max);
    box->setM_decimal(decimals);
    box->setM_currentValue(qBound(min, 0.0, max));
    box->setMinimumWidth(96);
    return box;
}

MCheckBox *checkItem(QWidget *parent, const QString &name, const QString &text)
{
    auto *item = new MCheckBox(parent);
    item->setObjectName(name);
    item->setM_text(text);
    item->setM_checkEnable(true);
    item->setMinimumWidth(item->sizeHint().width());
    return item;
}

MCheckBox *radioItem(QWidget *parent, const QString &name, const QString &text)
{
    MCheckBox *item = checkItem(parent, name, text);
    item->setM_radio(true);
    return item;
}

void keepOnlyChecked(const QVector<MCheckBox *> &group, const QString &name)
{
    for (MCheckBox *item : group) {
        if (item->objectName() != name)
            item->setM_checked(false);
    }
}

int checkedIndex(const QVector<MCheckBox *> &group)
{
    for (int i = 0; i < group.size(); ++i) {
        if (group.at(i)->checked())
            return i;
    }
    return -1;
}

double shownValue(const MSpinBox *box)
{
    const double scale = qPow(10.0, box->decimal());
    return qRound64(box->currentValue() * scale) / scale;
}

void selectIfValid(QComboBox *selector, int index)
{
    if (index >= 0 && index < selector->count())
        selector->setCurrentIndex(index);
}

} // namespace SectionWidgets
