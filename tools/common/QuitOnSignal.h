#pragma once

// SIGINT and SIGTERM end the application's event loop instead of killing the
// process, so that a simulator removes its link or closes its port on the way
// out. Call once, after the QCoreApplication exists. Returns false when the
// signal pipe cannot be made.
bool quitOnSignal();
