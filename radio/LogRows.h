#pragma once

#include "LinkReport.h"

#include <QFrame>

class QGridLayout;
class QLabel;

// The log monitor's table: a header row and one row per remote node. Both
// lay their cells out on the same fixed columns so that the rows, each its
// own widget in the monitor's scroll area, line up under the header.
//
// Columns: node id, antenna ("Main"/"Second"), RSSI, RSRP, SNR (coloured by
// link quality, explained by the window's legend), POWER, DISTANCE.

class LOG_TITLE : public QFrame
{
    Q_OBJECT
public:
    explicit LOG_TITLE(QWidget *parent = nullptr);
};

class LOG_ITEM : public QFrame
{
    Q_OBJECT
public:
    explicit LOG_ITEM(const LinkReport::LinkRecord &record, QWidget *parent = nullptr);

private:
    void addAntennaLine(int row, const QString &name, const QString &label,
        const LinkReport::AntennaFigures &figures, const LinkReport::LinkRecord &record);

    QGridLayout *m_grid;
};
