# The frame reader's fuzz target, built with clang's libFuzzer next to the g++ build. The scanner
# core is plain C++, so only its own sources are compiled. The test runs it for a bounded time on
# a synthesized seed corpus; run it longer by hand:
#   build/fuzz_Mp3FrameScanner -max_total_time=600 build/fuzz_corpus build/fuzz_seeds
find_program(TAVO_FUZZ_CXX NAMES clang++-14 clang++)
if(NOT TAVO_FUZZ_CXX)
    message(STATUS "clang++ not found: the MP3 reader fuzz target is not built")
    return()
endif()
# libFuzzer's runtime is a package of its own (libclang-rt-14-dev); without it, leave the target out.
set(_probe ${CMAKE_BINARY_DIR}/fuzz_probe.cpp)
file(WRITE ${_probe} "#include <cstddef>\n#include <cstdint>\nextern \"C\" int LLVMFuzzerTestOneInput(const std::uint8_t*, std::size_t) { return 0; }\n")
execute_process(COMMAND ${TAVO_FUZZ_CXX} -fsanitize=fuzzer,address,undefined ${_probe} -o ${CMAKE_BINARY_DIR}/fuzz_probe
                RESULT_VARIABLE _probe_result OUTPUT_QUIET ERROR_QUIET)
if(NOT _probe_result EQUAL 0)
    message(STATUS "${TAVO_FUZZ_CXX} cannot link libFuzzer: the MP3 reader fuzz target is not built")
    return()
endif()

set(_src ${CMAKE_SOURCE_DIR}/src/reports)
set(_mp3 ${CMAKE_SOURCE_DIR}/src/mp3)
set(_fuzz_sources ${CMAKE_CURRENT_LIST_DIR}/fuzz_Mp3FrameScanner.cpp ${_src}/Mp3FrameScanner.cpp
    ${_src}/MpegFrameHeader.cpp ${_mp3}/Mp3TagBounds.cpp)
set(_fuzz_binary ${CMAKE_BINARY_DIR}/fuzz_Mp3FrameScanner)
add_custom_command(
    OUTPUT ${_fuzz_binary}
    COMMAND ${TAVO_FUZZ_CXX} -std=c++20 -g -O1 -Wall -Wextra -fsanitize=fuzzer,address,undefined
            -fno-sanitize-recover=undefined -I${CMAKE_SOURCE_DIR}/src ${_fuzz_sources} -o ${_fuzz_binary}
    DEPENDS ${_fuzz_sources} ${_src}/Mp3FrameScanner.h ${_src}/MpegFrameHeader.h ${_mp3}/Mp3TagBounds.h
            ${_mp3}/Mp3ByteSource.h
    COMMENT "Building the MP3 reader fuzz target with ${TAVO_FUZZ_CXX}"
    VERBATIM)
add_custom_target(fuzz_Mp3FrameScanner ALL DEPENDS ${_fuzz_binary})

add_executable(make_fuzz_seeds ${CMAKE_CURRENT_LIST_DIR}/make_fuzz_seeds.cpp)
target_link_libraries(make_fuzz_seeds PRIVATE tavo_test_support)

add_test(NAME reports/fuzz_seeds COMMAND make_fuzz_seeds ${CMAKE_BINARY_DIR}/fuzz_seeds)
set_tests_properties(reports/fuzz_seeds PROPERTIES FIXTURES_SETUP mp3_fuzz_seeds)
add_test(NAME reports/fuzz_Mp3FrameScanner
         COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=1
                 ${_fuzz_binary} -max_total_time=10 -timeout=5 -rss_limit_mb=1024 -max_len=65536
                 -print_final_stats=1 ${CMAKE_BINARY_DIR}/fuzz_corpus ${CMAKE_BINARY_DIR}/fuzz_seeds)
set_tests_properties(reports/fuzz_Mp3FrameScanner PROPERTIES FIXTURES_REQUIRED mp3_fuzz_seeds TIMEOUT 120)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz_corpus)
