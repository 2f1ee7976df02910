/* A library that needs a function which nobody has. */
int function_that_nobody_has(void);

__attribute__((visibility("default"))) int calls_it(void) {
    return function_that_nobody_has();
}
