#pragma once

#include <QString>

// Every data file of the program lives beside the executable: config/,
// translations/, image/, the help texts, log/ and temp/. Paths are always the
// application directory plus a fixed relative path such as "/config/port.xml".
namespace AppPaths {

// The application directory. QUILLMARK_APP_DIR in the environment or a call to
// setAppDir() replaces the executable's directory (tests run the program
// against a temporary folder this way).
QString appDir();
void setAppDir(const QString &dir);

// appDir() + relative; relative starts with "/".
QString file(const QString &relative);

} // namespace AppPaths
