# Run by tessara_resource: writes a source that puts a text file into a module as a resource.
file(READ "${INPUT}" text)
# A literal has a limit in length: the text becomes several, which the compiler joins.
string(LENGTH "${text}" length)
set(literals "")
set(place 0)
while(place LESS length)
    string(SUBSTRING "${text}" ${place} 8192 piece)
    string(APPEND literals "\n    R\"resource(${piece})resource\"")
    math(EXPR place "${place} + 8192")
endwhile()
file(WRITE "${OUTPUT}" "#include \"module/resources.h\"
#include \"platform/com/module_resource.h\"

namespace {

TESSARA_RESOURCE(\"${TYPE}\", \"${NUMBER}\") constexpr char kText[] = ${literals};

}  // namespace

const std::string_view ${SYMBOL}(kText, sizeof kText - 1);
")
