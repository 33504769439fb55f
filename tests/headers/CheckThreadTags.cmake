# Thread tags: every header of the SDK, the host runtime and the plug-in spells them
# "[ui-thread]" and "[any-thread]" and no other way; every entry of a published function
# table and every host operation that the SDK declares opens its comment with one of them,
# followed by the sentence that says what it does. Variables: SOURCE_DIR.
file(GLOB_RECURSE all_headers
  ${SOURCE_DIR}/src/host/sdk/include/*.h
  ${SOURCE_DIR}/src/host/runtime/*.h
  ${SOURCE_DIR}/src/plugin/*.h)
set(problems "")

# One spelling.
foreach(header IN LISTS all_headers)
  file(STRINGS ${header} lines ENCODING UTF-8 REGEX "[Tt][Hh][Rr][Ee][Aa][Dd][]_]")
  foreach(line IN LISTS lines)
    string(REGEX MATCHALL "\\[[A-Za-z]+[-_ ][Tt]hread\\]|QZ_[A-Z]+_THREAD" tags "${line}")
    foreach(tag IN LISTS tags)
      if(NOT tag STREQUAL "[ui-thread]" AND NOT tag STREQUAL "[any-thread]")
        file(RELATIVE_PATH rel ${SOURCE_DIR} ${header})
        string(APPEND problems "${rel}: the tag ${tag} is spelled another way\n")
      endif()
    endforeach()
  endforeach()
endforeach()

# A tag and a sentence on every table entry and declared operation of the SDK.
file(GLOB_RECURSE sdk_headers ${SOURCE_DIR}/src/host/sdk/include/*.h)
set(checked 0)
foreach(header IN LISTS sdk_headers)
  file(RELATIVE_PATH rel ${SOURCE_DIR} ${header})
  file(STRINGS ${header} lines ENCODING UTF-8)
  set(comment_start "")
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    if(line MATCHES "^[ ]*///")
      if(comment_start STREQUAL "")
        set(comment_start "${line}")
      endif()
      continue()
    endif()
    set(declaration FALSE)
    # A function table entry (a member that points to a function), but not a type alias
    # and not the reserved entries that the host leaves empty.
    if(line MATCHES "^[ ]+[A-Za-z_].*\\(\\*[A-Za-z_0-9]+\\)\\(" AND NOT line MATCHES "^[ ]*using "
       AND NOT line MATCHES "\\(\\*reserved[0-9]+\\)")
      set(declaration TRUE)
    endif()
    # A host operation: a function that the host exports.
    if(line MATCHES "^QZ_HOST_API " AND line MATCHES "\\(" AND NOT line MATCHES "^QZ_HOST_API (class|struct) ")
      set(declaration TRUE)
    endif()
    if(declaration)
      math(EXPR checked "${checked} + 1")
      if(NOT comment_start MATCHES "^[ ]*///( [0-9]+(st|nd|rd|th)?\\.)? \\[(ui|any)-thread\\] [^ ]")
        string(STRIP "${line}" shown)
        string(APPEND problems "${rel}:${number}: no thread tag and sentence before: ${shown}\n")
      endif()
    endif()
    set(comment_start "")
  endforeach()
endforeach()

if(checked LESS 50)
  string(APPEND problems "only ${checked} declarations found: the header reading has gone wrong\n")
endif()
if(NOT problems STREQUAL "")
  message(FATAL_ERROR "${problems}")
endif()
message(STATUS "${checked} table entries and host operations carry a thread tag and a sentence")
