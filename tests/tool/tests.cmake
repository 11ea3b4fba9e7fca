# The command-line tool, run as its users do. Each class of tool_test.py is a test.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/tool_test.py classes REGEX "^class [A-Za-z]+\\(Case\\)")
foreach(line IN LISTS classes)
    string(REGEX REPLACE "^class ([A-Za-z]+).*" "\\1" class ${line})
    string(TOLOWER ${class} name)
    add_test(NAME tool/${name} COMMAND Python3::Interpreter ${CMAKE_CURRENT_LIST_DIR}/tool_test.py ${class})
    set_tests_properties(tool/${name} PROPERTIES ENVIRONMENT "TEVS=$<TARGET_FILE:tevs_tool>;TEVS_SOURCE=${PROJECT_SOURCE_DIR}/tool" TIMEOUT 600)
endforeach()
