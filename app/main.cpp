#include "Startup.h"

int main(int argc, char **argv)
{
    return runQuillmark(argc, argv);
}
