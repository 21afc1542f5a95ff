#include "PageHost.h"

namespace {
PageHost *g_host = nullptr;
}

PageHost *PageHost::instance()
{
    return g_host;
}

PageHost::PageHost()
{
    g_host = this;
}

PageHost::~PageHost()
{
    if (g_host == this)
        g_host = nullptr;
}
