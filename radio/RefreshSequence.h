#pragma once

#include <QString>
#include <QVector>

#include <optional>

// "Refresh all" in the module window: the rows' queries one after another,
// the next only once the previous one has its reply or has run out of time,
// so that the module's small web server never has more than one of them at
// a time. Two refresh buttons that ask the same question (the modem switch
// and the restart row both ask "AT+CFUN?") are asked once.
class RefreshSequence
{
public:
    struct Step {
        QString button; // object name of the row's refresh button
        QString query; // the AT query that button sends
    };

    // Starts a run over the steps in their order; a step whose query an
    // earlier step already asks is left out.
    void start(const QVector<Step> &steps);
    // The step to run now, counted as begun; nothing once every step has
    // begun or the run was stopped, and the run has then ended.
    std::optional<Step> next();
    // Ends the run: no further step begins.
    void stop();

    bool running() const { return m_running; }
    // Steps of this run, and how many of them have begun ("3/10").
    int total() const { return int(m_steps.size()); }
    int begun() const { return m_begun; }

private:
    QVector<Step> m_steps;
    int m_begun = 0;
    bool m_running = false;
};
