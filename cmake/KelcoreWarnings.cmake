# Warning flags for the project's own targets only; third-party code keeps its own.
add_library(kelcore_warnings INTERFACE)
target_compile_options(kelcore_warnings INTERFACE -Wall -Wextra)
if(KELCORE_WERROR)
    target_compile_options(kelcore_warnings INTERFACE -Werror)
endif()
