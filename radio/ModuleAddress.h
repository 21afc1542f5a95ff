#pragma once

#include <QString>

// Where the radio link module's web server is. The user types an address
// into the module windows; the module itself always listens on port 80, and
// "host:port" is also accepted so that a simulated module on this machine
// can be reached.
namespace ModuleAddress
{
// The module's factory address, shown in the address fields.
QString factoryAddress();

// The text the address fields start with: QUILLMARK_MODULE_ADDRESS when it is
// set and not empty, the factory address otherwise.
QString startAddress();

struct Endpoint
{
    QString host;
    quint16 port = 80;
    bool valid = false;
};

// Splits the typed text into host and port: "host" is port 80, "host:port"
// takes a port 1..65535, "[v6]:port" and a bare IPv6 literal are understood.
// Surrounding blanks are ignored. Empty hosts and bad ports are not valid.
Endpoint parse(const QString &typed);

// True for 127.0.0.0/8, ::1 and "localhost": the addresses that never leave
// this machine. Names are not looked up.
bool isLoopback(const QString &host);

// Called right before anything is sent to the module. While
// QUILLMARK_LOOPBACK_ONLY is set (the test suite sets it), an address off
// this machine ends the program at once with a message naming it, so that a
// test can never reach a real module or the factory address.
void guard(const Endpoint &endpoint);
} // namespace ModuleAddress
