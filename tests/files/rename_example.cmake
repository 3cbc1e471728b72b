# Runs the command-line renamer as a user does, on a scratch folder of its own: a dry run
# changes nothing, a real run renames, and a run onto a taken name is refused.
# Arguments: -DRENAME=<program> -DWORK_DIR=<folder> [-DEMULATOR=<runner of the program>]
string(RANDOM LENGTH 12 tag)
set(scratch "rename-${tag}")
set(folder "${WORK_DIR}/${scratch}")
file(MAKE_DIRECTORY "${folder}")

function(fail text)
    file(REMOVE_RECURSE "${folder}")
    message(FATAL_ERROR "${text}")
endfunction()

# Runs the program, checks its exit status and that its output holds `shows`.
function(run status shows)
    execute_process(COMMAND ${EMULATOR} "${RENAME}" ${ARGN} WORKING_DIRECTORY "${WORK_DIR}"
                    RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
    string(REPLACE "\r" "" out "${out}${err}")
    string(FIND "${out}" "${shows}" at)
    if(NOT code EQUAL status OR at EQUAL -1)
        fail("rename ${ARGN}: status ${code} (expected ${status}), output lacks '${shows}':\n${out}")
    endif()
endfunction()

# The folder holds exactly these names, each file still holding the name it was made with.
function(holds)
    file(GLOB names RELATIVE "${folder}" "${folder}/*")
    list(SORT names)
    if(NOT "${names}" STREQUAL "${ARGN}")
        fail("the folder holds '${names}', not '${ARGN}'")
    endif()
endfunction()

foreach(name IMG_0001.jpeg IMG_0002.jpeg notes.txt)
    file(WRITE "${folder}/${name}" "${name}")
endforeach()

run(0 "IMG_0001.jpeg  ->  IMG_0001.jpg" --dry-run --replace "*.jpeg" "*.jpg" ${scratch})
holds(IMG_0001.jpeg IMG_0002.jpeg notes.txt)
run(0 "Renamed 2 file(s)" --replace "*.jpeg" "*.jpg" ${scratch})
holds(IMG_0001.jpg IMG_0002.jpg notes.txt)
# Named files go in the order given.
run(0 "IMG_0002.jpg  ->  photo_001.jpg" --pattern "photo_###.jpg" ${scratch} IMG_0002.jpg IMG_0001.jpg)
holds(notes.txt photo_001.jpg photo_002.jpg)
file(READ "${folder}/photo_001.jpg" content)
if(NOT content STREQUAL "IMG_0002.jpeg")
    fail("photo_001.jpg holds '${content}'")
endif()

# Taken names are refused, in a dry run too; forced, the run stops at the first failure.
run(1 "notes.txt      ->  photo_001.jpg   <- taken" --pattern "photo_00#.jpg" ${scratch})
run(1 "nothing renamed" --dry-run --replace notes.txt photo_001.jpg ${scratch})
file(WRITE "${folder}/2.txt" "")
run(1 "could not rename photo_001.jpg to 2.txt; already renamed: notes.txt -> 1.txt"
    --force --pattern "#.txt" ${scratch} notes.txt photo_001.jpg)
holds(1.txt 2.txt photo_001.jpg photo_002.jpg)

run(1 "bad replacement" --replace "*" "?" ${scratch})
run(1 "no such folder" --pattern "#" "${scratch}-missing")
run(2 "unknown option" --bogus ${scratch})
run(0 "?    copies the character" --help)
file(REMOVE_RECURSE "${folder}")
