# cmake -DCC=... -DINCLUDE=... -DHEADER=... -DNAMES=... -DSOURCE=... -DFUNCTIONS=... -P declared.cmake
#
# Lists what a header declares, functions and variables, in NAMES, and writes a C program that takes the address of each. FUNCTIONS becomes the C++
# source of test::functions().
execute_process(COMMAND ${CC} -E -P -I${INCLUDE} -x c ${INCLUDE}/${HEADER} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "\n" text "${text}")   # a semicolon would separate list elements

string(REGEX MATCHALL "tevs?[A-Za-z0-9_]+[ \n]*\\(" functions "${text}")
list(TRANSFORM functions REPLACE "[ \n]*\\($" "")
string(REGEX MATCHALL "extern [a-z0-9_ ]+ [A-Za-z0-9_]+" variables "${text}")
list(TRANSFORM variables REPLACE ".* " "")
foreach(kind functions variables)
    list(LENGTH ${kind} before)
    list(REMOVE_DUPLICATES ${kind})
    list(LENGTH ${kind} after)
    if(NOT before EQUAL after)
        message(FATAL_ERROR "${HEADER} declares one of its ${kind} twice")
    endif()
endforeach()
list(LENGTH functions count)
if(count EQUAL 0)
    message(FATAL_ERROR "${HEADER} declares no function")
endif()

string(REGEX MATCHALL "tevs?[A-Za-z0-9_]+[ \n]*\\([^()]*\\)" prototypes "${text}")
list(TRANSFORM prototypes REPLACE "[ \n]+" " ")
list(TRANSFORM prototypes REPLACE "^([A-Za-z0-9_]+) ?(.*)$" "        {test::made<\\1>, \"\\1\", \"\\2\"},\n")
string(JOIN "" prototypes ${prototypes})
file(WRITE ${FUNCTIONS} "#include \"support/function.h\"

// A table of pointers: one expression that made all of them would take the compiler minutes.
const std::vector<test::Function>& test::functions() {
    struct Row {
        Function (*made)(std::string_view name, std::string_view prototype);
        const char *name, *prototype;
    };
    static constexpr Row rows[] = {
${prototypes}    };
    static const std::vector<Function> all = [] {
        std::vector<Function> v;
        for (const Row& row : rows) v.push_back(row.made(row.name, row.prototype));
        return v;
    }();
    return all;
}
")

set(names ${functions} ${variables})
list(SORT names)
list(JOIN names "\n" lines)
file(WRITE ${NAMES} "${lines}\n")

list(TRANSFORM functions REPLACE ".+" "    (Function)\\0,\n")
list(TRANSFORM variables REPLACE ".+" "    &\\0,\n")
string(JOIN "" functions ${functions})
string(JOIN "" variables ${variables})
file(WRITE ${SOURCE} "#include \"${HEADER}\"

typedef void (*Function)(void);

static Function const volatile kFunctions[] = {
${functions}};
static const volatile void* const volatile kVariables[] = {
${variables}    &kFunctions,
};

int main(void) {
    for (unsigned i = 0; i < sizeof kFunctions / sizeof *kFunctions; ++i)
        if (!kFunctions[i]) return 1;
    for (unsigned i = 0; i < sizeof kVariables / sizeof *kVariables; ++i)
        if (!kVariables[i]) return 2;
    return 0;
}
")
