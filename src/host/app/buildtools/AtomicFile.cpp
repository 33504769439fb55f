#include "buildtools/AtomicFile.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

namespace qzbuildtools {

void WriteAtomically(const std::filesystem::path& path, const std::string& bytes) {
    const std::filesystem::path temporary = path.string() + ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            throw std::runtime_error("cannot write '" + temporary.string() + "'");
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, path, error);
    if (error) {
        throw std::runtime_error("cannot rename '" + temporary.string() + "' to '" + path.string() +
                                 "': " + error.message());
    }
}

} // namespace qzbuildtools
