# cmake -DREADME=... -DEXAMPLE=... -DPROGRAM=... -P readme.cmake: the README, or a page of the manual, quotes the example to the letter, and what it prints.
file(READ ${README} readme)
file(READ ${EXAMPLE} text)
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(FIND "${readme}" "```c\n${text}```\n\nprints\n\n```\n${output}```\n" at)
if(at EQUAL -1)
    message(FATAL_ERROR "${README} does not quote ${EXAMPLE} followed by its output:\n${text}${output}")
endif()
