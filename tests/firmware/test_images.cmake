# Images in good files are taken over byte for byte; anything else stops the configuration and says why.
#   cmake -DWORK=... -DBLINK=... -P test_images.cmake
include(${CMAKE_CURRENT_LIST_DIR}/intel_hex.cmake)
set(folder "${WORK}/folder of images")
set(source ${WORK}/images.cpp)
string(RANDOM LENGTH 28358 RANDOM_SEED 1 trelou_text)
string(RANDOM LENGTH 56536 RANDOM_SEED 2 treloe_text)
string(HEX ${trelou_text} trelou)
string(HEX ${treloe_text} treloe)
velda_any_digits(5938 3 sorel)
velda_any_digits(7244 4 trelo)

file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/good/trelou.bin ${trelou_text})
file(WRITE ${WORK}/good/treloe.bin ${treloe_text})
velda_intel_hex(${sorel} ${WORK}/good/sorel.hex)
velda_intel_hex(${trelo} ${WORK}/good/trelo.hex)

# A folder with the four images, two raw and two as Intel HEX.
function(good_folder)
  file(REMOVE_RECURSE ${folder})
  file(COPY ${WORK}/good/ DESTINATION ${folder})
endfunction()

# Runs what the configuration runs.
macro(read_folder)
  execute_process(COMMAND ${CMAKE_COMMAND} -DFOLDER=${folder} -DBLINK=${BLINK} -DSOURCE=${source}
    -P ${CMAKE_CURRENT_LIST_DIR}/read_folder.cmake RESULT_VARIABLE status ERROR_VARIABLE said OUTPUT_QUIET)
endmacro()

# The message is compared from its beginning to its end.
function(expect_refusal case message)
  read_folder()
  string(REGEX REPLACE "[ \n]+" " " said "${said}")
  string(FIND "${said}" "(message): ${folder}${message} Call Stack" at)
  if(status EQUAL 0 OR at LESS 0)
    message(SEND_ERROR "${case}: ended with ${status} and said: ${said}")
  endif()
  message(STATUS "${case}: refused")
endfunction()

# The array of that name in the source, as digits.
function(expect_array name digits)
  file(READ ${source} text)
  string(REGEX MATCH "${name}\\[[^{]*{([^}]*)}" array "${text}")
  string(REGEX REPLACE "0x|[, \n]" "" found "${CMAKE_MATCH_1}")
  if(NOT found STREQUAL digits)
    message(SEND_ERROR "${name} differs from its file")
  endif()
endfunction()

function(expect_images supplied)
  read_folder()
  if(NOT status EQUAL 0)
    message(SEND_ERROR "${said}")
  endif()
  file(READ ${source} text)
  if(NOT text MATCHES "firmwareSupplied = ${supplied};")
    message(SEND_ERROR "firmwareSupplied is not ${supplied}")
  endif()
  foreach(name trelou treloe sorel trelo)
    string(TOUPPER FW_${name}_DATA array)
    expect_array(${array} "${${name}}")
  endforeach()
endfunction()

# Replaces the record of that number, from 1, in an image; the others stay as they are.
function(replace_record image number text)
  file(STRINGS ${folder}/${image}.hex records NO_HEX_CONVERSION)
  math(EXPR index "${number} - 1")
  list(REMOVE_AT records ${index})
  if(text)
    list(INSERT records ${index} ${text})
  endif()
  list(JOIN records "\n" records)
  file(WRITE ${folder}/${image}.hex "${records}\n")
endfunction()

good_folder()
expect_images(true)

# The largest as Intel HEX.
good_folder()
file(REMOVE ${folder}/treloe.bin)
velda_intel_hex(${treloe} ${folder}/treloe.hex)
expect_images(true)

# Records that say nothing about the bytes: where a program starts, and the addresses' base.
good_folder()
file(READ ${folder}/sorel.hex text)
file(WRITE ${folder}/sorel.hex ":020000020000fc\n:020000040000fa\n:0400000300000000f9\n:0400000500000000f7\n${text}")
expect_images(true)

# Line ends of another system, and digits in capitals.
good_folder()
file(READ ${folder}/sorel.hex text)
string(TOUPPER "${text}" text)
string(REPLACE "\n" "\r\n" text "${text}")
file(WRITE ${folder}/sorel.hex "${text}")
expect_images(true)

foreach(file trelou.bin treloe.bin sorel.hex trelo.hex)
  good_folder()
  file(REMOVE ${folder}/${file})
  string(REGEX REPLACE "\\..*" "" name ${file})
  expect_refusal("${name} missing" " holds neither ${name}.bin nor ${name}.hex")
endforeach()

file(REMOVE_RECURSE ${folder})
expect_refusal("folder missing" " holds neither trelou.bin nor trelou.hex")

good_folder()
file(WRITE ${folder}/sorel.bin "x")
expect_refusal("two files" " holds both sorel.bin and sorel.hex: which one is meant?")

foreach(size 7243 7245)
  good_folder()
  file(REMOVE ${folder}/trelo.hex)
  string(REPEAT x ${size} raw)
  file(WRITE ${folder}/trelo.bin "${raw}")
  expect_refusal("raw file of ${size} bytes" "/trelo.bin holds ${size} bytes, the image has 7244")
endforeach()

good_folder()
file(REMOVE ${folder}/trelo.hex)
file(WRITE ${folder}/trelo.bin "")
expect_refusal("empty raw file" "/trelo.bin holds 0 bytes, the image has 7244")

good_folder()
velda_any_digits(5936 3 digits)
velda_intel_hex(${digits} ${folder}/sorel.hex)
expect_refusal("Intel HEX of too few bytes" "/sorel.hex holds 5936 bytes, the image has 5938")

good_folder()
replace_record(sorel 3 ":10002000000102030405060708090a0b0c0d0e0f59")
expect_refusal("bad checksum" "/sorel.hex:3: the checksum is wrong")

good_folder()
replace_record(sorel 3 "")
expect_refusal("gap" "/sorel.hex:3: a gap, byte 32 should follow and it is 48")

good_folder()
replace_record(sorel 2 ":10000000000102030405060708090a0b0c0d0e0f78")
expect_refusal("overlap" "/sorel.hex:2: a gap, byte 16 should follow and it is 0")

good_folder()
replace_record(sorel 1 ":020000040001f9")
expect_refusal("image of another place" "/sorel.hex:2: a gap, byte 0 should follow and it is 65552")

good_folder()
replace_record(sorel 1 ":020000021000ec")
expect_refusal("image of another segment" "/sorel.hex:2: a gap, byte 0 should follow and it is 65552")

good_folder()
replace_record(sorel 2 ":03000004000000f9")
expect_refusal("base of three bytes" "/sorel.hex:2: an unknown record, type 04")

good_folder()
replace_record(sorel 2 ":00000006fa")
expect_refusal("unknown record" "/sorel.hex:2: an unknown record, type 06")

good_folder()
replace_record(sorel 2 ":020000000001")
expect_refusal("record cut off" "/sorel.hex:2: the record's length is wrong")

# Copying that ended early: 113 records are 4972 characters with their line ends.
function(expect_refusal_torn length message)
  good_folder()
  file(READ ${folder}/sorel.hex text LIMIT ${length})
  file(WRITE ${folder}/sorel.hex "${text}")
  expect_refusal("torn behind ${length} characters" "${message}")
endfunction()
expect_refusal_torn(4972 "/sorel.hex: the end record is missing")
expect_refusal_torn(5000 "/sorel.hex:114: no Intel HEX record")
expect_refusal_torn(5001 "/sorel.hex:114: the record's length is wrong")

foreach(line "hello" ":" ":00" ":0000000" ":0g000000")
  good_folder()
  replace_record(sorel 2 "${line}")
  expect_refusal("line \"${line}\"" "/sorel.hex:2: no Intel HEX record")
endforeach()

good_folder()
replace_record(sorel 2 ":00000001ff")
expect_refusal("end in the middle" "/sorel.hex:3: a record behind the last one")

good_folder()
replace_record(sorel 373 "")
expect_refusal("no end" "/sorel.hex: the end record is missing")

good_folder()
file(WRITE ${folder}/sorel.hex "")
expect_refusal("empty Intel HEX" "/sorel.hex: the end record is missing")

# Without a folder: erased flash, and the build knows it.
set(folder "")
foreach(image trelou:28358 treloe:56536 sorel:5938 trelo:7244)
  string(REPLACE ":" ";" image ${image})
  list(GET image 0 name)
  list(GET image 1 size)
  string(REPEAT ff ${size} ${name})
endforeach()
expect_images(false)
