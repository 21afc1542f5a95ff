// Where the program looks for its data and where it writes at run time: a
// build tree, an installed tree, and an installed tree the user cannot write.
#include "AppPaths.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

class TestAppPaths : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void dataAndWritableDirs_data();
    void dataAndWritableDirs();
    void writableTreeKeepsItsFiles();
};

void TestAppPaths::dataAndWritableDirs_data()
{
    QTest::addColumn<QStringList>("dirs");     // folders that exist
    QTest::addColumn<QStringList>("writable"); // of those, the writable ones
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("writes");
    const QString user = QStringLiteral("/home/u/.local/share/quillmark");
    QTest::newRow("build tree") << QStringList { "/b/bin/config" } << QStringList { "/b/bin", "/b/bin/config" }
                                << "/b/bin" << "/b/bin";
    QTest::newRow("installed, writable") << QStringList { "/p/share/quillmark/config" }
                                         << QStringList { "/p/share/quillmark", "/p/share/quillmark/config" }
                                         << "/p/share/quillmark" << "/p/share/quillmark";
    QTest::newRow("installed, read-only") << QStringList { "/usr/share/quillmark/config" } << QStringList {}
                                          << "/usr/share/quillmark" << user;
    QTest::newRow("installed, config read-only") << QStringList { "/p/share/quillmark/config" }
                                                 << QStringList { "/p/share/quillmark" } << "/p/share/quillmark"
                                                 << user;
    // Beside the program wins over an installed tree next to it.
    QTest::newRow("both") << QStringList { "/p/bin/config", "/p/share/quillmark/config" }
                          << QStringList { "/p/bin", "/p/bin/config" } << "/p/bin" << "/p/bin";
    QTest::newRow("nothing anywhere") << QStringList {} << QStringList {} << "/p/bin" << user;
}

void TestAppPaths::dataAndWritableDirs()
{
    QFETCH(QStringList, dirs);
    QFETCH(QStringList, writable);
    QFETCH(QString, data);
    QFETCH(QString, writes);
    const QSet<QString> existing(dirs.begin(), dirs.end());
    const QSet<QString> open(writable.begin(), writable.end());
    const QString exeDir = data.startsWith(QLatin1String("/b/")) ? QStringLiteral("/b/bin")
        : data.startsWith(QLatin1String("/usr/")) ? QStringLiteral("/usr/bin")
                                                  : QStringLiteral("/p/bin");
    const QString got = AppPaths::dataDirFor(exeDir, [&](const QString &d) { return existing.contains(d); });
    QCOMPARE(got, data);
    QCOMPARE(AppPaths::writableDirFor(got, QStringLiteral("/home/u/.local/share/quillmark"),
                                      [&](const QString &d) { return open.contains(d); }),
             writes);
}

// A writable application directory keeps the run-time files and the port file.
void TestAppPaths::writableTreeKeepsItsFiles()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVERIFY(QDir().mkpath(dir.path() + QStringLiteral("/config")));
    AppPaths::setAppDir(dir.path());
    const QString port = QStringLiteral("/config/port.xml");
    QCOMPARE(AppPaths::writableDir(), dir.path()); // writable here: run-time files stay beside the data
    QCOMPARE(AppPaths::userFile(port), dir.path() + port);
    QCOMPARE(AppPaths::writableFile(QStringLiteral("/config/lastAddr.tmp")),
             dir.path() + QStringLiteral("/config/lastAddr.tmp"));
}

QTEST_GUILESS_MAIN(TestAppPaths)
#include "tst_apppaths.moc"
