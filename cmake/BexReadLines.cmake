# bex_read_lines(<file> <out-var>)
#
# The file's lines as a CMake list, one element a line, for scripts run with
# cmake -P that read source files line by line. The characters that would
# split or join list elements are replaced first: "\" by "/", "[" and "]" by
# "(" and ")", ";" by ","; carriage returns are dropped. None of them changes
# what an #include line names or how a declaration reads.
function(bex_read_lines file out)
    file(READ "${file}" content)
    string(REPLACE "\r" "" content "${content}")
    string(REPLACE "\\" "/" content "${content}")
    string(REPLACE "[" "(" content "${content}")
    string(REPLACE "]" ")" content "${content}")
    string(REPLACE ";" "," content "${content}")
    string(REPLACE "\n" ";" lines "${content}")
    set(${out} "${lines}" PARENT_SCOPE)
endfunction()
