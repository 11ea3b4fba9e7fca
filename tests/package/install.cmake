# cmake -DBUILD=... -DWORK=... -DPREFIX=... -P install.cmake: installs under WORK, then moves the tree to PREFIX.
file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/installed COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${WORK}/installed ${PREFIX})
