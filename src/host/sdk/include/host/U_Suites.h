// Suite publication: a function table that a component offers to the others through the
// host's basic suite table.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

/// [ui-thread] Publishes a suite in the host's basic suite table so that other
/// components acquire it by `name` and `version`. `host_a` and `host_b` must be null;
/// `internal` is the host's publication kind. Returns an error when a suite of that
/// name and version is already published or an argument is invalid.
QZ_HOST_API QZ_Err U_SP_AddSPSuite(void* host_a, void* host_b, const char* name,
                                   std::int32_t version, std::int32_t internal,
                                   std::int32_t slot_count, const void* table);
