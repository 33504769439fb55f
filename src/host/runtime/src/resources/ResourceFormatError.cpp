#include "qzhost/ResourceArchive.h"

namespace qzhost::resources {

ResourceFormatError::ResourceFormatError(const std::string& subject, const std::string& reason)
    : std::runtime_error(subject + ": " + reason), subject_(subject), reason_(reason) {}

} // namespace qzhost::resources
