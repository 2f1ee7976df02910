/* A library that is no provider. */
__attribute__((visibility("default"))) int not_a_factory(void) {
    return 0;
}
