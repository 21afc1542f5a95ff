// The gaps between the write-all's frames as the unit sees them, while other
// processes load every core. The unit needs its 100 ms between two writes; a
// frame that leaves the program late shortens the gap before the next one,
// however exactly the program's own waits were kept.
//
//   bench_wiregap [--rounds N] [--load N]
//
// The program's own main window (offscreen, with its pages, answers and the
// "写入中..." notice) runs the write-all N times (default 3) against a
// pseudo-terminal whose master a thread reads at the highest priority it may
// have: it answers identification, module kind and every write the way a
// unit does and stamps each frame's arrival. Meanwhile N processes (default:
// two per core) spin. Prints the smallest, median and largest gap.
#include "AppPaths.h"
#include "FrameCutter.h"
#include "MainWindow.h"
#include "Messages.h"
#include "SerialFrame.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

namespace
{

double nowMs()
{
    timespec t {};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// The unit's side of the pseudo-terminal.
class Peer
{
public:
    explicit Peer(int master)
        : m_master(master)
    {
    }

    void start()
    {
        m_thread = std::thread([this] { run(); });
    }
    void stop()
    {
        m_stop = true;
        m_thread.join();
    }
    // Arrival times of the frames received since the last call.
    std::vector<double> takeArrivals()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        std::vector<double> taken;
        taken.swap(m_arrivals);
        return taken;
    }
    bool realtime() const { return m_realtime; }

private:
    void answer(quint8 code, const QByteArray &payload)
    {
        const QByteArray frame = SerialFrame::encode(code, payload);
        if (::write(m_master, frame.constData(), size_t(frame.size())) < 0)
            std::perror("bench_wiregap: answer");
    }

    void run()
    {
        sched_param p {};
        p.sched_priority = sched_get_priority_max(SCHED_FIFO);
        m_realtime = pthread_setschedparam(pthread_self(), SCHED_FIFO, &p) == 0;
        FrameCutter cutter;
        char buf[4096];
        while (!m_stop) {
            pollfd fd { m_master, POLLIN, 0 };
            if (poll(&fd, 1, 50) <= 0)
                continue;
            const ssize_t n = ::read(m_master, buf, sizeof buf);
            if (n <= 0)
                continue;
            const double at = nowMs();
            cutter.feed(QByteArray(buf, int(n)), [&](quint8 code, const QByteArray &) {
                {
                    std::lock_guard<std::mutex> lock(m_mutex);
                    m_arrivals.push_back(at);
                }
                if (code == 0xDF)
                    answer(0xDF, QByteArray(1, '\x01')); // module power page
                else if (code == 0xFF)
                    answer(0xFF, QByteArrayLiteral("ALDER"));
                else
                    answer(code, QByteArray(1, '\0')); // accepted
            });
        }
    }

    int m_master;
    std::thread m_thread;
    std::atomic<bool> m_stop { false };
    std::atomic<bool> m_realtime { false };
    std::mutex m_mutex;
    std::vector<double> m_arrivals;
};

std::vector<pid_t> startLoad(int processes)
{
    std::vector<pid_t> pids;
    for (int i = 0; i < processes; ++i) {
        const pid_t pid = fork();
        if (pid == 0) {
            volatile unsigned long spin = 0;
            for (;;)
                spin = spin + 1;
        }
        if (pid > 0)
            pids.push_back(pid);
    }
    return pids;
}

void stopLoad(const std::vector<pid_t> &pids)
{
    for (pid_t pid : pids)
        kill(pid, SIGKILL);
    for (pid_t pid : pids)
        waitpid(pid, nullptr, 0);
}

int intOption(const QStringList &args, const QString &name, int fallback)
{
    const int i = args.indexOf(name);
    return i >= 0 && i + 1 < args.size() ? args.at(i + 1).toInt() : fallback;
}

// A copy of the build's application directory whose port file names the pty.
bool prepareAppDir(const QString &dir, const QByteArray &slavePath)
{
    const QString from = QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/config");
    QDir().mkpath(dir + QStringLiteral("/config"));
    for (const QString &name : QDir(from).entryList(QDir::Files))
        QFile::copy(from + QLatin1Char('/') + name, dir + QStringLiteral("/config/") + name);
    QFile port(dir + QStringLiteral("/config/port.xml"));
    QFile::remove(port.fileName());
    if (!port.open(QIODevice::WriteOnly))
        return false;
    port.write("<config><port>" + slavePath + "</port></config>");
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int rounds = qMax(1, intOption(args, QStringLiteral("--rounds"), 3));
    const int load
        = qMax(0, intOption(args, QStringLiteral("--load"), 2 * int(std::thread::hardware_concurrency())));

    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        std::fprintf(stderr, "bench_wiregap: no pseudo-terminal\n");
        return 2;
    }
    const QByteArray slavePath = ptsname(master);
    const int slave = ::open(slavePath.constData(), O_RDWR | O_NOCTTY); // the master never hangs up
    termios raw {};
    tcgetattr(slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);

    QTemporaryDir dir;
    if (!prepareAppDir(dir.path(), slavePath))
        return 2;
    AppPaths::setAppDir(dir.path());
    // No one answers a message box here: say it and go on.
    Messages::setResponder([](const Messages::Shown &shown) {
        std::fprintf(
            stderr, "bench_wiregap: message %s: %s\n", qPrintable(shown.title), qPrintable(shown.text));
        return false;
    });

    Peer peer(master);
    peer.start();
    int frames = 0;
    std::vector<double> gaps;
    {
        MainWindow window; // opens the port, identifies the unit, builds its pages
        window.show();
        if (!window.hub()) {
            std::fprintf(stderr, "bench_wiregap: the window did not identify the unit\n");
            return 1;
        }
        const std::vector<pid_t> loaders = startLoad(load);
        for (int r = 0; r < rounds; ++r) {
            peer.takeArrivals();
            window.writeAll();
            std::vector<double> at = peer.takeArrivals();
            frames += int(at.size());
            for (size_t i = 1; i < at.size(); ++i)
                gaps.push_back(at[i] - at[i - 1]);
        }
        stopLoad(loaders);
    }
    peer.stop();
    ::close(slave);
    ::close(master);

    if (gaps.empty()) {
        std::fprintf(stderr, "bench_wiregap: the peer saw %d frames\n", frames);
        return 1;
    }
    std::sort(gaps.begin(), gaps.end());
    std::printf("frames=%d rounds=%d load_processes=%d peer_realtime=%s gap_ms min=%.2f p1=%.2f median=%.2f "
                "max=%.2f below_95ms=%zu\n",
        frames, rounds, load, peer.realtime() ? "yes" : "no", gaps.front(), gaps[gaps.size() / 100],
        gaps[gaps.size() / 2], gaps.back(),
        size_t(std::count_if(gaps.begin(), gaps.end(), [](double g) { return g < 95.0; })));
    return 0;
}
