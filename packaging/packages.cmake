# The packages. A head unit installs the first one and brings its own host library.

set(qt "libqt5widgets5 (>= 5.15), libqt5gui5 (>= 5.15) | libqt5gui5-gles (>= 5.15)")
set(runtime "libc6 (>= 2.34), libgcc-s1, libstdc++6 (>= 11)")
# Of the vehicle module, which needs no window
set(car "libqt5core5a (>= 5.15), libqt5dbus5 (>= 5.15), libqt5network5 (>= 5.15), libqt5serialbus5 (>= 5.15), libqt5serialbus5-plugins (>= 5.15), libqt5serialport5 (>= 5.15)")
set(same "(= ${PROJECT_VERSION})")

norda_package(plugin norda-plugin
    SECTION libs
    DEPENDS "${runtime}, libqt5core5a (>= 5.15), ${qt}"
    SUMMARY "user interface of a vehicle module for in-car head units"
    TEXT "Gauges, vehicle information, climate, parking assist, the module's\nsettings and an About page as a plugin that a head unit loads, with three\naudio sources for the module's voice. The head unit brings the host library\nthat the plugin runs against.")
norda_package(host norda-host
    SECTION libs
    DEPENDS "${runtime}, libqt5core5a (>= 5.15), libqt5dbus5 (>= 5.15), ${qt}"
    SUMMARY "reference implementation of the head unit's host library"
    TEXT "The host interfaces of an in-car head unit as a library that runs on a desk,\nwith the icon library of its pages. A head unit replaces it with its own.")
norda_package(dev norda-host-dev
    SECTION libdevel
    DEPENDS "norda-host ${same}, qtbase5-dev (>= 5.15)"
    SUMMARY "interfaces of the head unit's host library"
    TEXT "The headers that head unit plugins are compiled against, and the CMake\npackage NordaHost with the target norda::host.")
if(TARGET norda_api)
    norda_package(doc norda-host-doc
        SECTION doc
        DEPENDS ""
        SUMMARY "API reference of the head unit's host interfaces"
        TEXT "Every class, operation and signal that head unit plugins are compiled against,\nas HTML pages in /usr/share/doc/norda-host-doc/html.")
    set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
endif()
norda_package(unit norda-unit
    SECTION misc
    DEPENDS "${runtime}, norda-host ${same}, norda-plugin ${same}, libqt5core5a (>= 5.15), ${qt}, libqt5multimedia5 (>= 5.15), adduser, fonts-liberation, fonts-dejavu-core"
    CONTROL "${CMAKE_CURRENT_LIST_DIR}/unit/conffiles" "${CMAKE_CURRENT_LIST_DIR}/unit/postinst"
        "${CMAKE_CURRENT_LIST_DIR}/unit/prerm" "${CMAKE_CURRENT_LIST_DIR}/unit/postrm"
    SUMMARY "head unit on the whole display"
    TEXT "Loads the plugin as a head unit does, shows its pages full screen without a\ndesktop, and connects to the vehicle module over D-Bus. A systemd unit starts\nit and watches over it.")
norda_package(bench norda-bench
    SECTION devel
    DEPENDS "${runtime}, norda-host ${same}, norda-plugin ${same}, ${car}, ${qt}, libqt5multimedia5 (>= 5.15), libqwt-qt5-6 (>= 6.1.4), dbus-daemon, fonts-liberation, fonts-dejavu-core"
    SUMMARY "drive and observe a head unit plugin on a desk"
    TEXT "Loads the plugin as a head unit does and drives it with a simulated car, a\nconnected one, or recorded drives: OBD-II exports, candump logs and its own\nrecordings.")
norda_package(ecu norda-ecu
    SECTION devel
    DEPENDS "${runtime}, ${car}"
    SUMMARY "car on a CAN bus, or ELM327 adapter in one"
    TEXT "The other end of the cable of a live car, for developing and testing what\nreads it: control units that answer OBD-II requests on a CAN bus, and an\nadapter on a pseudo terminal or a TCP port.")
norda_package(moduled norda-moduled
    SECTION misc
    DEPENDS "${runtime}, ${car}, adduser, default-dbus-system-bus | dbus-system-bus"
    CONTROL "${CMAKE_CURRENT_LIST_DIR}/moduled/postinst" "${CMAKE_CURRENT_LIST_DIR}/moduled/prerm"
        "${CMAKE_CURRENT_LIST_DIR}/moduled/postrm"
    SUMMARY "vehicle module of a head unit, as a service on D-Bus"
    TEXT "The module that a head unit shows: a connected car by OBD-II or its own CAN\nframes, a recorded drive, or a simulated car. It needs no display. Only its\nuser may serve on the system bus, only members of its group may talk to it.")

# What a board's packages hold
add_custom_target(norda_board DEPENDS nordaPlugin norda_icons norda-unit norda-moduled norda-ecu)

install(FILES "${CMAKE_CURRENT_LIST_DIR}/norda-bench.desktop" DESTINATION share/applications
    COMPONENT bench)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/norda-mime.xml" DESTINATION share/mime/packages
    RENAME norda.xml COMPONENT bench)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/norda-bench.svg"
    DESTINATION share/icons/hicolor/scalable/apps COMPONENT bench)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/unit.conf" DESTINATION /etc/norda COMPONENT unit)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/norda-unit.service" DESTINATION lib/systemd/system
    COMPONENT unit)
foreach(pair "norda-bench bench" "norda-ecu ecu" "norda-moduled moduled" "norda-unit unit")
    separate_arguments(pair)
    list(POP_FRONT pair program component)
    set(page "${PROJECT_BINARY_DIR}/packaging/${program}.1.gz")
    norda_compress("${CMAKE_CURRENT_LIST_DIR}/${program}.1" "${page}")
    install(FILES "${page}" DESTINATION share/man/man1 COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME norda)
set(CPACK_PACKAGE_VENDOR "The norda authors")
set(CPACK_PACKAGE_CONTACT "The norda authors <norda@norda.example.org>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
if(CMAKE_CROSSCOMPILING)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
endif()
include(CPack)
