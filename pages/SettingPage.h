#pragma once

#include "CodeId.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QVector>
#include <QWidget>

struct DeviceData;

// A page of the configuration hub that edits one parameter group. The hub
// shows it in its section; the main window asks it for its write payloads
// and its part of the parameter file, and hands it every answer of the unit.
class SettingPage : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    // The hub chose a section this page serves (the SBUS page serves two ports).
    virtual void showSection(int section) { Q_UNUSED(section) }
    // Fills the controls from the record.
    virtual void refreshFromRecord() = 0;
    // Copies the controls into the record and returns the payloads of a write
    // of the shown section, in the order the write sends them.
    virtual QList<QByteArray> collectPayloads() = 0;
    // The payloads of the write-all (from the record, or from the controls
    // where the page says so).
    virtual QList<QByteArray> payloadsFromRecord() = 0;
    // This page's elements of the parameter file.
    virtual QString fileFragment() = 0;

    // What a write of the page would take from its controls, put into a
    // scratch record; neither the record nor the controls change.
    virtual void collectInto(DeviceData &scratch) const { Q_UNUSED(scratch) }
    // The controls that show record fields, with the keys of those fields
    // (UnwrittenEdits::key); a control is marked when one of them differs
    // from what the unit holds.
    struct FieldControl {
        QWidget *control;
        QStringList keys;
    };
    virtual QVector<FieldControl> fieldControls() const { return {}; }

public Q_SLOTS:
    virtual void slot_information(CodeID code, QByteArray data) = 0;

protected:
    // The main window's record; a page built without a main window (a tool
    // rendering pages) works on a record of its own.
    DeviceData &record();
    const DeviceData &record() const;
};
