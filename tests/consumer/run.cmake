# Installs the library into a prefix of its own and builds and runs a program that finds it there.
# Takes build_dir, source_dir, work_dir, generator, compiler, launcher.

function(run_or_fail)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "Failed: ${ARGV}")
    endif()
endfunction()

set(prefix "${work_dir}/a prefix") # with a blank, as a home directory may have one
file(REMOVE_RECURSE ${work_dir})
run_or_fail(${CMAKE_COMMAND} --install ${build_dir} --prefix ${prefix})
run_or_fail(${CMAKE_COMMAND} -S ${source_dir} -B ${work_dir}/build -G ${generator}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${compiler}
    -DCMAKE_CXX_COMPILER_LAUNCHER=${launcher})
run_or_fail(${CMAKE_COMMAND} --build ${work_dir}/build)
run_or_fail(${work_dir}/build/consumer)
