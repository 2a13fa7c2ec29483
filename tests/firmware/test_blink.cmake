# The committed FW_BLINK is what its source gives: the program, then erased flash.
set(rebuilt ${WORK}/blink.hex)
file(MAKE_DIRECTORY ${WORK})
execute_process(COMMAND ${TREE}/scripts/make-blink.sh ${rebuilt} COMMAND_ERROR_IS_FATAL ANY)
file(READ ${rebuilt} rebuilt)
file(READ ${TREE}/link/firmware/blink/blink.hex committed)
if(NOT rebuilt STREQUAL committed)
  message(FATAL_ERROR "blink.hex is not what scripts/make-blink.sh makes of blink.c")
endif()
