#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace Vunit
{

// Cuts the configurator's requests out of the bytes read from the line.
// Unlike the configurator's own cutter it takes every code (the unit decides
// what it knows) and it reports the bytes that belong to no frame. A header
// whose frame has not fully arrived does not hold up complete frames behind
// it, and a header announcing more than kMaxPayload bytes is taken for noise,
// so garbage on the line delays nothing.
class RequestCutter
{
public:
    static constexpr int kMaxPayload = 1024;
    using Sink = std::function<void(quint8 code, const QByteArray &payload)>;

    void feed(const QByteArray &bytes, const Sink &sink, QStringList *notes);
    int pendingSize() const { return m_pending.size(); }
    void clear() { m_pending.clear(); }

private:
    QByteArray m_pending;
};

} // namespace Vunit
