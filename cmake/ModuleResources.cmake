# Run by the build of a module for Windows: writes a resource script from the files that other modules embed as they are.
# NAME is the text 100, SCRIPT the resource REGISTRY 102, LIBRARY the resource TYPELIB 1, VERSION the version record,
# MANIFEST the manifest.
file(READ "${NAME}" name)

file(STRINGS "${VERSION}" lines)
set(fields "")
set(values "")
foreach(line IN LISTS lines)
    if(line MATCHES "^TRANSLATION (.*),(.*)$")
        set(language ${CMAKE_MATCH_1})
        set(page ${CMAKE_MATCH_2})
        string(SUBSTRING ${language} 2 -1 block)
        string(SUBSTRING ${page} 2 -1 block_page)
        string(APPEND block ${block_page})
    elseif(line MATCHES "^VALUE \"OriginalFilename\"")
        string(APPEND values "            VALUE \"OriginalFilename\", \"${FILE}\"\n")
    elseif(line MATCHES "^VALUE (\".*\") (\".*\")$")
        string(APPEND values "            VALUE ${CMAKE_MATCH_1}, ${CMAKE_MATCH_2}\n")
    elseif(NOT line STREQUAL "")
        string(APPEND fields "${line}\n")
    endif()
endforeach()

file(WRITE "${OUTPUT}" "LANGUAGE 9, 1

STRINGTABLE
BEGIN
    100 \"${name}\"
END

102 REGISTRY \"${SCRIPT}\"
1 TYPELIB \"${LIBRARY}\"
2 24 \"${MANIFEST}\"

1 VERSIONINFO
${fields}BEGIN
    BLOCK \"StringFileInfo\"
    BEGIN
        BLOCK \"${block}\"
        BEGIN
${values}        END
    END
    BLOCK \"VarFileInfo\"
    BEGIN
        VALUE \"Translation\", ${language}, ${page}
    END
END
")
