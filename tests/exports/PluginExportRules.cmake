# What a plug-in library may export: its entry point and the members of RQSession (its
# constructors, destructors, assignment, virtual table and type information), each
# present, and nothing else.
#   qz_check_plugin_exports(LIBRARY <file> NAMES <exported symbol names>)
# Stops the script with an error naming the first symbol that breaks the rule.
function(qz_check_plugin_exports)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "LIBRARY" "NAMES")
  set(found_entry FALSE)
  set(found_session FALSE)
  foreach(name IN LISTS arg_NAMES)
    if(name STREQUAL "GPMain_InfoPal")
      set(found_entry TRUE)
    elseif(name MATCHES "^_Z(N9RQSession|TV9RQSession$|TI9RQSession$|TS9RQSession$)")
      set(found_session TRUE)
    else()
      message(FATAL_ERROR "${arg_LIBRARY} exports '${name}', which is neither the entry point nor RQSession")
    endif()
  endforeach()
  if(NOT found_entry OR NOT found_session)
    message(FATAL_ERROR "${arg_LIBRARY} does not export GPMain_InfoPal and RQSession")
  endif()
endfunction()
