// Qt 5's offscreen platform plugin never frees its screen at exit (a bare
// QApplication shows the same 7 allocations). Telling LeakSanitizer so keeps
// the sanitizer runs of these tests meaningful; it has no effect otherwise.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libqoffscreen.so\n"
           "leak:QScreen::QScreen\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n";
}
