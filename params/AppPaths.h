#pragma once

#include <QString>

#include <functional>

// Every data file of the program lives in its application directory:
// config/, translations/, image/, the help texts. Paths are always that
// directory plus a fixed relative path such as "/config/port.xml".
//
// The application directory is the executable's directory in a build tree,
// or <prefix>/share/quillmark when the program is installed to <prefix>/bin.
// Files the program writes at run time (config/lastAddr.tmp, temp/, log/,
// backup/) go to the application directory while it and its config/ are
// writable, and otherwise to the user's data folder
// (~/.local/share/quillmark), under the same relative paths.
namespace AppPaths {

// The application directory. QUILLMARK_APP_DIR in the environment or a call to
// setAppDir() replaces it (tests run the program against a temporary folder
// this way).
QString appDir();
void setAppDir(const QString &dir);

// appDir() + relative; relative starts with "/".
QString file(const QString &relative);

// Where run-time files go, and writableDir() + relative.
QString writableDir();
QString writableFile(const QString &relative);

// A file the user may want to change in an installed program (config/port.xml):
// the copy in writableDir() when there is one, else the delivered file.
QString userFile(const QString &relative);

// The rules behind appDir() and writableDir(), given the executable's
// directory, the user's data folder and a test for writable folders.
QString dataDirFor(const QString &executableDir, const std::function<bool(const QString &)> &isDir);
QString writableDirFor(const QString &dataDir, const QString &userDataDir,
                       const std::function<bool(const QString &)> &isWritableDir);

} // namespace AppPaths
