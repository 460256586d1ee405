# What belongs where on a desktop. The programs lie together in a folder of their own, since they look for each other
# and for nimbrel-info.json beside themselves; in the folder of the user's programs there are links to them.

include(GNUInstallDirs)

set(NIMBREL_PAM_DIR "/usr/lib/pam.d" CACHE PATH "Where the system looks for the rules of authentication")
set(NIMBREL_AUTOSTART_DIR "/etc/xdg/autostart" CACHE PATH "Where the desktop looks for what it starts at login")

set(programs "${CMAKE_INSTALL_LIBEXECDIR}/nimbrel")
set(made "${CMAKE_BINARY_DIR}/made-for-install")
file(RELATIVE_PATH from_bin_to_programs "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBEXECDIR}/nimbrel")

# nimbrel_install_link(NAME TARGET DESTINATION)
function(nimbrel_install_link name target destination)
  string(MD5 folder "${destination}")
  file(MAKE_DIRECTORY "${made}/${folder}")
  file(CREATE_LINK "${target}" "${made}/${folder}/${name}" SYMBOLIC)
  install(FILES "${made}/${folder}/${name}" DESTINATION "${destination}")
endfunction()

install(TARGETS nimbrel nimbrelctl nimbrel-reader nimbrel-screencapture nimbrel-screenrecord
  DESTINATION "${programs}")
install(FILES "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/nimbrel-info.json" DESTINATION "${programs}")
nimbrel_install_link(nimbrel-menubar nimbrel "${programs}")
foreach(program nimbrel nimbrel-menubar nimbrelctl)
  nimbrel_install_link(${program} "${from_bin_to_programs}/${program}" "${CMAKE_INSTALL_BINDIR}")
endforeach()

set(id com.halderquist.nimbrel)
set(resources "${CMAKE_SOURCE_DIR}/Resources")
install(FILES "${resources}/applications/${id}.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES "${resources}/metainfo/${id}.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES "${resources}/icons/scalable/${id}.svg"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
install(FILES "${resources}/icons/symbolic/${id}-symbolic.svg"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps")
install(FILES "${resources}/man/nimbrel.1" "${resources}/man/nimbrelctl.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
nimbrel_install_link(nimbrel-menubar.1 nimbrel.1 "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${resources}/completions/nimbrel" "${resources}/completions/nimbrelctl"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
nimbrel_install_link(nimbrel-menubar nimbrel "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")

foreach(service ${id} ${id}.menubar)
  configure_file("${resources}/dbus/${service}.service.in" "${made}/${service}.service" @ONLY)
  install(FILES "${made}/${service}.service" DESTINATION "${CMAKE_INSTALL_DATADIR}/dbus-1/services")
endforeach()

# Where the system looks for them, whatever the prefix. The entry at login is a link to a file of ours, so that nothing
# stays behind in the folder of the system's settings when Nimbrel is removed; who does not want it hides it in
# ~/.config/autostart.
install(FILES "${resources}/pam.d/nimbrel" DESTINATION "${NIMBREL_PAM_DIR}")
install(FILES "${resources}/autostart/${id}.menubar.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/nimbrel/autostart")
nimbrel_install_link(${id}.menubar.desktop
  "${CMAKE_INSTALL_FULL_DATADIR}/nimbrel/autostart/${id}.menubar.desktop" "${NIMBREL_AUTOSTART_DIR}")
