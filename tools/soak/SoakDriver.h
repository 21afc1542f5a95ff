#pragma once

#include "SoakSeries.h"

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

class MainWindow;
class QAbstractButton;
class QLabel;
class QTimer;
class UnitRunner;

struct SoakOptions {
    double minutes = 60;
    QString outDir;
    QStringList unitArguments; // the unit's model, faults and rate
    // How often each thing happens, in seconds.
    int sampleS = 60;
    int hubS = 20;
    int sectionS = 60;
    int fileS = 300;
    int hangupS = 600;
    double maxGrowthMbPerHour = 1.0;
};

// Works the program's main window the way a user would for a long time,
// clicking its buttons by object name, while the virtual unit streams:
// enters the hub and leaves it, reads and writes a section, saves and loads a
// parameter file, and unplugs the unit and plugs it in again. Once per sample
// interval it writes the process's resident memory and CPU share and the
// link's counters to a CSV line. The operations never overlap; each one is
// judged by what the window shows and what the unit answered.
class SoakDriver : public QObject
{
    Q_OBJECT
public:
    SoakDriver(MainWindow *window, UnitRunner *unit, const SoakOptions &options, QObject *parent = nullptr);

    // Waits for the window's model page, then starts the clock. False when
    // the unit was never identified.
    bool begin();
    const QVector<SoakSample> &samples() const { return m_samples; }

Q_SIGNALS:
    void finished();

private:
    enum Op { HubOp, SectionOp, FileOp, HangupOp, OpCount };

    void tick();
    void sample();
    void run(Op op);
    bool enterHub(QString *why);
    bool leaveHub(QString *why);
    bool readAndWriteSection(QString *why);
    bool saveAndLoadFile(QString *why);
    bool hangUpAndReturn(QString *why);
    bool onModelPage() const;
    bool waitUntil(const std::function<bool()> &done, int timeoutMs);
    void click(QAbstractButton *button);
    QString operationText() const;
    double elapsedS() const;
    void note(const QString &text);

    MainWindow *m_window;
    UnitRunner *m_unit;
    SoakOptions m_options;
    QLabel *m_connectingLabel = nullptr;
    QTimer *m_tick;
    QElapsedTimer m_clock;
    QFile m_csv;
    QVector<SoakSample> m_samples;
    double m_nextDue[OpCount] {};
    double m_nextSample = 0;
    double m_lastCpuMs = 0;
    double m_lastSampleS = 0;
    bool m_busy = false;
    int m_done = 0;
    int m_failed = 0;
    int m_doneByOp[OpCount] {};
    int m_failedByOp[OpCount] {};
    int m_reconnectsDone = 0;
    int m_reconnectsFailed = 0;
    quint64 m_groupAnswers = 0;
    quint64 m_reports = 0;
    int m_section = 0; // the hub section read and written next, in turn
    int m_unitStarts = 1;
};
