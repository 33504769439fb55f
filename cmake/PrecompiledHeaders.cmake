# Headers that many sources of a target include and that are slow to compile (GoogleTest
# and GoogleMock, nlohmann/json) are compiled once per target as a precompiled header,
# which roughly halves the time to build the tests and the host program's libraries.
option(QZ_PRECOMPILE_HEADERS "Precompile the slow common headers of tests and host libraries" ON)

set(QZ_PCH_TESTS <gtest/gtest.h> <gmock/gmock.h>)
set(QZ_PCH_JSON <nlohmann/json.hpp>)

# qz_precompile(target header...): precompiles the headers for every source of `target`.
function(qz_precompile target)
  if(QZ_PRECOMPILE_HEADERS)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
