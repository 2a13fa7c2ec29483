# The option VELDA_FIRMWARE_DIR from a first configuration through every change of it and of its files.
#   cmake -DGENERATOR=... -DWORK=... -P test_firmware_dir.cmake
set(build "${WORK}/build")
set(source "${build}/firmware/image_data.cpp")

# Four raw images that hold nothing but the byte.
function(make_folder folder byte)
  foreach(image trelou:28358 treloe:56536 sorel:5938 trelo:7244)
    string(REPLACE ":" ";" image ${image})
    list(GET image 0 name)
    list(GET image 1 size)
    string(REPEAT ${byte} ${size} raw)
    file(WRITE "${folder}/${name}.bin" "${raw}")
  endforeach()
endfunction()

# Configures with the arguments.
function(configure)
  execute_process(COMMAND ${CMAKE_COMMAND} -G "${GENERATOR}" -S ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/images_only
    -B ${build} ${ARGV} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Builds, and so configures anew if something that the configuration has read is newer.
function(build)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${build} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The first byte of the perforator's image in the source, and what the build knows of the images.
function(expect case supplied byte)
  file(READ ${source} text)
  string(REGEX MATCH "firmwareSupplied = ([a-z]+);" found "${text}")
  set(found_supplied ${CMAKE_MATCH_1})
  string(REGEX MATCH "FW_SOREL_DATA[^{]*{\n *(0x..)," found "${text}")
  if(NOT "${found_supplied} ${CMAKE_MATCH_1}" STREQUAL "${supplied} ${byte}")
    message(FATAL_ERROR "${case}: the source has ${found_supplied} ${CMAKE_MATCH_1}")
  endif()
  message(STATUS "${case}: ${supplied} ${byte}")
endfunction()

file(REMOVE_RECURSE ${WORK})
make_folder("${WORK}/first folder" a)
make_folder("${WORK}/second" b)

configure()
expect("without the option" false 0xff)
configure("-DVELDA_FIRMWARE_DIR=${WORK}/first folder")
expect("a folder with a blank in its path" true 0x61)
configure()
expect("configured again" true 0x61)
configure(-DVELDA_FIRMWARE_DIR=${WORK}/second)
expect("another folder" true 0x62)
build()
make_folder("${WORK}/second" c)
build()
expect("other files in the folder" true 0x63)
configure(-DVELDA_FIRMWARE_DIR=)
expect("the option emptied" false 0xff)

# What is wrong stops the configuration, also one that the build begins.
configure(-DVELDA_FIRMWARE_DIR=${WORK}/second)
file(REMOVE ${WORK}/second/sorel.bin)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${build}
  RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
string(REGEX REPLACE "[ \n]+" " " said "${said}")
string(FIND "${said}" "${WORK}/second holds neither sorel.bin nor sorel.hex" at)
if(status EQUAL 0 OR at LESS 0)
  message(FATAL_ERROR "a file that has gone: ended with ${status} and said: ${said}")
endif()
