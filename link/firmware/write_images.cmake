# Makes the C++ source with the data of the images.
include(${CMAKE_CURRENT_LIST_DIR}/read_image.cmake)

# The devices' images by the names of their files, each with its size.
set(VELDA_DEVICE_IMAGES trelou:28358 treloe:56536 sorel:5938 trelo:7244)

# Adds to a text the definition of one array.
function(velda_append_array result name size digits)
  string(TOUPPER "FW_${name}" record)
  string(REGEX REPLACE "(..)" "0x\\1," bytes ${digits})
  set(byte "0x..,")
  string(REGEX REPLACE "(${byte}${byte}${byte}${byte}${byte}${byte}${byte}${byte}${byte}${byte})" "    \\1\n" bytes ${bytes})
  string(APPEND ${result} "\nstatic_assert(${record}.size == ${size});\n"
    "const unsigned char ${record}_DATA[${record}.size] = {\n${bytes}};\n")
  set(${result} "${${result}}" PARENT_SCOPE)
endfunction()

# Writes the source. With an empty folder erased flash stands in the place of the devices' images.
function(velda_write_images folder blink source)
  set(text "#include \"link/firmware/images.h\"\n")
  if(folder)
    string(APPEND text "\nconst bool firmwareSupplied = true;\n")
  else()
    string(APPEND text "\nconst bool firmwareSupplied = false;\n")
  endif()
  foreach(image ${VELDA_DEVICE_IMAGES})
    string(REPLACE ":" ";" image ${image})
    list(GET image 0 name)
    list(GET image 1 size)
    if(folder)
      velda_find_image(${folder} ${name} path)
      velda_read_image(${path} ${size} digits)
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${path})
    else()
      string(REPEAT "ff" ${size} digits)
    endif()
    velda_append_array(text ${name} ${size} ${digits})
  endforeach()
  velda_read_image(${blink} 1070 digits)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${blink})
  velda_append_array(text blink 1070 ${digits})
  file(CONFIGURE OUTPUT ${source} CONTENT "${text}" @ONLY)
endfunction()
