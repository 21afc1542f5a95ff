#pragma once

#include "DeviceData.h"
#include "Sequences.h"
#include "UnwrittenEdits.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

class ChannelListenInterface;
class QTimer;
class SettingPage;

// Keeps what the unit holds (its answers, and the writes it took) apart from
// the record the pages edit, marks the controls and hub menu buttons whose
// values would change the unit, and asks before leaving them unwritten.
class EditTracker : public QObject
{
    Q_OBJECT
public:
    enum class Occasion { Return, Close, Reconnect };
    // Writes one hub section through its write sequence, without a further
    // confirmation.
    using WriteSection = std::function<void(int section)>;

    EditTracker(DeviceData &record, WriteSection write, QWidget *window);

    // A new connection: nothing is known of the unit yet, nothing is marked.
    void forget();
    // An accepted answer to a read request, or a write that went out.
    void noteAnswer(quint8 readCode, const QByteArray &payload, int model);
    void noteWrite(const RequestPlan &plan, int model);

    // Watches the hub's pages; the hub asks before its Return.
    void attach(ChannelListenInterface *hub);

    // Compares the pages with what the unit holds now, marks them and returns
    // the hub sections whose pages would change the unit.
    QVector<int> refresh();

    // With unwritten edits, asks whether to write them, discard them or stay.
    // True when the caller goes on (after writing or discarding).
    bool settle(Occasion occasion);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void schedule();
    void watch(SettingPage *page);
    void writeSections(QVector<int> sections);
    void discard();
    QString sectionNames(const QVector<int> &sections) const;

    DeviceData &m_record;
    WriteSection m_write;
    QWidget *m_window;
    DeviceData m_known;
    UnwrittenEdits::Groups m_answered = 0;
    int m_model = 0;
    QPointer<ChannelListenInterface> m_hub;
    QTimer *m_timer;
};
