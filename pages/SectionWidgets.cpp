#include "SectionWidgets.h"

#include "MCheckBox.h"
#include "MSpinBox.h"

#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionComboBox>
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

namespace
{

void widenForItems(QComboBox *selector)
{
    int widest = 0;
    for (int i = 0; i < selector->count(); ++i)
        widest = qMax(widest, selector->fontMetrics().horizontalAdvance(selector->itemText(i)));
    // What the frame and the arrow take of a selector's width, as its style
    // (with the window's style sheet) lays it out.
    constexpr int probe = 200;
    QStyleOptionComboBox option;
    option.initFrom(selector);
    option.rect = QRect(0, 0, probe, selector->sizeHint().height());
    const int field
        = selector->style()
              ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, selector)
              .width();
    // The style sheet's arrow sits partly over the field: a line's height of air.
    const int air = selector->fontMetrics().height();
    selector->setMinimumWidth(qMax(selector->minimumWidth(), widest + probe - field + air));
}

// Measures again once the style sheet of the window reaches the selector.
class ItemFitter : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::Polish || type == QEvent::StyleChange || type == QEvent::FontChange)
            widenForItems(static_cast<QComboBox *>(watched));
        return false;
    }
};

} // namespace

void fitItems(QComboBox *selector)
{
    selector->installEventFilter(new ItemFitter(selector));
    widenForItems(selector);
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
