// The library's name and version, for `strings` and core dumps.

namespace fcip {

extern const char version_text[];
[[gnu::used]] const char version_text[] = "libFCIPProvider " FCIP_PROVIDER_VERSION;

} // namespace fcip
