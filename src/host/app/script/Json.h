// The JSON type of host scripts: objects keep their members in insertion order, so that
// every output object starts with "op".
#pragma once

#include <nlohmann/json.hpp>

namespace qzhost::script {

using Json = nlohmann::ordered_json;

} // namespace qzhost::script
