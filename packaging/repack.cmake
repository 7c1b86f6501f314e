# Run by cpack on the archive that it has made, which has the times and the order of the file system: the same sources
# give the same bytes. cpack ignores what fails here, and then misses the archive, which is removed first.
file(REMOVE ${CPACK_PACKAGE_FILES})
execute_process(
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/../tools/source-date
    OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH folder)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME name)
execute_process(
    COMMAND tar --create --format=ustar --sort=name --mtime=@${time} --owner=root:0 --group=root:0 --mode=u+rwX,go=rX
        --directory=${folder} ${name}
    COMMAND gzip --no-name --best
    OUTPUT_FILE ${CPACK_PACKAGE_FILES}.new COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${CPACK_PACKAGE_FILES}.new ${CPACK_PACKAGE_FILES})
# Complete or not at all: cpack, which would copy it, leaves a result that is the same.
cmake_path(GET CPACK_PACKAGE_FILES FILENAME archive)
file(REMOVE ${CPACK_PACKAGE_DIRECTORY}/${archive})
file(CREATE_LINK ${CPACK_PACKAGE_FILES} ${CPACK_PACKAGE_DIRECTORY}/${archive})
