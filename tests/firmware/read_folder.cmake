# What the configuration does with VELDA_FIRMWARE_DIR: cmake -DFOLDER=... -DBLINK=... -DSOURCE=... -P
include(${CMAKE_CURRENT_LIST_DIR}/../../link/firmware/write_images.cmake)
velda_write_images("${FOLDER}" ${BLINK} ${SOURCE})
