# ostrel_add_translations(<target> <basename>)
# Each library with user-visible text keeps its own translations in
# resources/translations/<basename>_en.ts and <basename>_zh_CN.ts. They are compiled and
# embedded as :/i18n/<basename>_<language>.qm; the application loads every file of the chosen
# language at start-up. `cmake --build <dir> --target <target>_lupdate` refreshes the .ts files
# from the sources.
function(ostrel_add_translations target basename)
    set(ts_dir ${PROJECT_SOURCE_DIR}/resources/translations)
    set(ts_files ${ts_dir}/${basename}_en.ts ${ts_dir}/${basename}_zh_CN.ts)
    qt_add_lupdate(${target} TS_FILES ${ts_files} OPTIONS -no-obsolete -locations none)
    qt_add_lrelease(${target} TS_FILES ${ts_files} QM_FILES_OUTPUT_VARIABLE qm_files)
    qt_add_resources(${target} ${basename}_i18n PREFIX /i18n BASE ${CMAKE_CURRENT_BINARY_DIR}
                     FILES ${qm_files})
endfunction()
