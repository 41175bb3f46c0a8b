# Brings the texts of the sources into the translations: cmake -DLUPDATE=PROGRAM [-DTO=FOLDER] -P update-translations.cmake
#
# What is no longer in the sources goes, what is new comes as "unfinished". English has only the texts with a number, for
# its singulars. TO is where the files are, the project's own ones unless it is given.
cmake_minimum_required(VERSION 3.22)
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
if(NOT TO)
    set(TO ${root}/translations)
endif()
file(GLOB sources LIST_DIRECTORIES true ${root}/src/*)
list(FILTER sources EXCLUDE REGEX "/(cli|CMakeLists.txt)$")
set(options -silent -extensions cpp,h -locations none -no-obsolete -I ${root}/src)
set(de)
set(en -pluralonly)
set(fr)
foreach(language de en fr)
    execute_process(
        COMMAND ${LUPDATE} ${options} ${${language}} ${sources} -source-language en_GB -target-language ${language}
                -ts ${TO}/sonvika_${language}.ts
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
