#include "switchdump/switchdump.h"

int main(int argc, char** argv) {
    return switchdump::run(argc, argv);
}
