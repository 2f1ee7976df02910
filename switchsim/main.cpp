#include "switchsim/program.h"

int main(int argc, char** argv) {
    return switchsim_program::run({argv + 1, argv + argc});
}
