# Installs the libraries of the package.json of the calling folder, in the versions of its
# package-lock.json, when something needs `OUT`, which names the file that is present since then.
function(tarni_npm_modules OUT what)
  set(present "${CMAKE_CURRENT_SOURCE_DIR}/node_modules/.package-lock.json")
  add_custom_command(OUTPUT "${present}"
    COMMAND "${TARNI_NPM}" ci --ignore-scripts --silent
    COMMAND "${CMAKE_COMMAND}" -E touch "${present}"
    DEPENDS package.json package-lock.json
    WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
    COMMENT "Installing ${what}")
  set(${OUT} "${present}" PARENT_SCOPE)
endfunction()
