-- SPDX-FileCopyrightText: 2026 the tavqz authors
-- SPDX-License-Identifier: MIT
-- For wrk: enumerates the lease, with the credentials of $AUTHORIZATION.
wrk.method = "POST"
wrk.body = [[
<?xml version="1.0" encoding="utf-8"?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ><IMETHODCALL NAME="EnumerateInstances"><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="tavqz"/></LOCALNAMESPACEPATH><IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="TAVIRA_Lease"/></IPARAMVALUE></IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>
]]
wrk.headers["Content-Type"] = "application/xml; charset=utf-8"
wrk.headers["CIMOperation"] = "MethodCall"
wrk.headers["CIMMethod"] = "EnumerateInstances"
wrk.headers["CIMObject"] = "root/tavqz"
local authorization = os.getenv("AUTHORIZATION")
if authorization and authorization ~= "" then
   wrk.headers["Authorization"] = authorization
end

function done(summary, latency)
   local failed = summary.errors.connect + summary.errors.read + summary.errors.write +
      summary.errors.status + summary.errors.timeout
   io.write(string.format("rate=%.1f p99=%.1f failed=%d\n",
      summary.requests / summary.duration * 1e6, latency:percentile(99), failed))
end
