// A shared library that is no plug-in: it exports no SDK version.
extern "C" __attribute__((visibility("default"))) int CorvalaTestNotAPlugin() {
    return 1;
}
