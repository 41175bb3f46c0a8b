# Run while installing. In: "template", and "directories", where programs and data go: absolute or below the prefix.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
list(TRANSFORM directories REPLACE "^([^/].*)$" "${prefix}/\\1")
list(GET directories 0 programs)
list(GET directories 1 shared)

set(program "${programs}/sonvika")
set(service "${shared}/dbus-1/services/org.sonvika.Sonvika.service")
set(written "$ENV{DESTDIR}${service}")
message(STATUS "Installing: ${written}")
configure_file("${template}" "${written}" @ONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${service}")
