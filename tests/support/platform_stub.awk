# Makes of platform/services.h a C file with all functions of the platform, which do nothing, and its two variables:
#
#   awk -f platform_stub.awk platform/services.h
BEGIN { print "long inet_addr_null[8];\nint mts_q;" }
{
    sub(/\/\/.*/, "")
    while (match($0, /[A-Za-z_0-9]+\(/)) {
        print "void " substr($0, RSTART, RLENGTH) "void) {}"
        $0 = substr($0, RSTART + RLENGTH)
    }
}
