// The JSON form of inspect: one object per record.
#pragma once

#include <string>
#include <vector>

#include "record_conversion.h"
#include "record_request.h"

namespace quillon_cli {

// {"file", "kind", "type", "result", "reason", "size", "read_end", "objects": [{"class",
// "version", "begin", "end", "refused", "children"}], "materials", "findings"}; "type" is null
// for kinds without one, "reason" null for a converted record, "end" null for an object whose
// read did not finish.
std::string inspectJson(const std::string& file, const RecordRequest& request,
                        const Conversion& conversion, const std::vector<std::string>& findings);

}  // namespace quillon_cli
