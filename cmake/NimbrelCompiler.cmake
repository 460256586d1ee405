# One compiler configuration for everything we build.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

add_library(NimbrelCompiler INTERFACE)
target_compile_options(NimbrelCompiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual
  # Designated initialisers name what differs and leave the rest to the defaults of the fields.
  -Wno-missing-field-initializers
  # g++ 12 reports overlapping copies inside std::string that are not there.
  -Wno-restrict
  $<$<BOOL:${NIMBREL_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(NimbrelCompiler INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS
  QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(NIMBREL_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(NimbrelCompiler INTERFACE ${sanitizers})
  target_link_options(NimbrelCompiler INTERFACE ${sanitizers})
endif()
if(NIMBREL_FUZZING)
  # What tells the fuzzer which way was taken.
  target_compile_options(NimbrelCompiler INTERFACE -fsanitize=fuzzer-no-link)
endif()
