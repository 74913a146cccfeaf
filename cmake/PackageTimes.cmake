# Run by CPack before it packs: gives all files one time, so that the archive depends on what they hold alone.
file(GLOB_RECURSE files LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(file IN LISTS files)
    execute_process(COMMAND touch -h -d "2000-01-01 00:00:00 UTC" "${file}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
