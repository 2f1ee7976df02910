-- One request, again and again: BODY is the file with its bytes, METHOD and OBJECT its headers.
local file = assert(io.open(os.getenv("BODY"), "rb"))
wrk.method = "POST"
wrk.body = file:read("*a")
file:close()
wrk.headers["Content-Type"] = "application/xml; charset=\"utf-8\""
wrk.headers["CIMOperation"] = "MethodCall"
wrk.headers["CIMMethod"] = os.getenv("METHOD")
wrk.headers["CIMObject"] = "root/cimv2"
wrk.headers["CIMProtocolVersion"] = "1.0"
