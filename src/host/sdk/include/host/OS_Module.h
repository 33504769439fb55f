// Loaded libraries, known by their module handle.
#pragma once

#include <string>

#include "qzgp/QZ_Basic.h"

/// The base address at which a library is loaded; null for none.
using OS_ModuleHandle = const void*;

/// [any-thread] The module handle of the library that holds `address`, or null.
QZ_HOST_API OS_ModuleHandle OS_ModuleFromAddress(const void* address);

/// [any-thread] The file path of the library behind `module`, or "" when unknown.
QZ_HOST_API std::string OS_ModulePath(OS_ModuleHandle module);
