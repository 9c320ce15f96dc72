# Proves that every text of the library is found by lupdate and stands in the translation file: running it on a copy
# changes nothing.
# Run as: cmake -DSOURCE_DIR=<the repository> -DWORK_DIR=<a scratch folder> -DLUPDATE=<lupdate>
#         "-DTEXTS=<files with texts, | between them>" -P translations.cmake

set(res "${SOURCE_DIR}/src/res")
string(REPLACE "|" ";" texts "${TEXTS}")
file(REMOVE_RECURSE "${WORK_DIR}")
file(COPY "${res}/translations/TdCommon_de.ts" DESTINATION "${WORK_DIR}")
execute_process(COMMAND "${LUPDATE}" -silent -no-obsolete -locations none ${texts} -ts "${WORK_DIR}/TdCommon_de.ts"
                COMMAND_ERROR_IS_FATAL ANY)
file(READ "${res}/translations/TdCommon_de.ts" kept)
file(READ "${WORK_DIR}/TdCommon_de.ts" updated)
if(NOT kept STREQUAL updated)
  message(FATAL_ERROR "src/res/translations/TdCommon_de.ts is behind the texts: build update_translations")
endif()
