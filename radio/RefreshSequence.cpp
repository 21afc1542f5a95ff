#include "RefreshSequence.h"

#include <QSet>

void RefreshSequence::start(const QVector<Step> &steps)
{
    m_steps.clear();
    QSet<QString> asked;
    for (const Step &step : steps) {
        if (asked.contains(step.query))
            continue;
        asked.insert(step.query);
        m_steps.append(step);
    }
    m_begun = 0;
    m_running = true;
}

std::optional<RefreshSequence::Step> RefreshSequence::next()
{
    if (!m_running || m_begun >= m_steps.size()) {
        m_running = false;
        return std::nullopt;
    }
    return m_steps.at(m_begun++);
}

void RefreshSequence::stop()
{
    m_running = false;
}
