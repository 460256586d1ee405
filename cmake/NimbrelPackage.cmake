# A Debian package of what is installed. Files that name the folders they lie in are made when the build is configured,
# so that only a build for /usr can be packed: the preset "package", or Scripts/package.

if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nimbrel)
set(CPACK_PACKAGE_VENDOR Halderquist)
set(CPACK_PACKAGE_CONTACT "Nimbrel maintainers <nimbrel@halderquist.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "catalogue of screenshots")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Nimbrel watches the folders in which screenshots land, keeps a catalogue of every\n\
shot, reads its text and codes on the machine, hides what looks sensitive until\n\
you have authenticated, finds near duplicates, and files, tags and sorts shots by\n\
rules of your own. Nothing leaves the machine.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Beside the libraries: plug-ins, models and programs that are looked for at run time.
set(depends
  ca-certificates
  hicolor-icon-theme
  libglib2.0-bin
  libqt6svg6
  qt6-image-formats-plugins
  shared-mime-info
  tesseract-ocr-eng
  xdg-utils)
list(JOIN depends ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, qt6-wayland, xdg-desktop-portal")
# The group may neither write nor be another one than root's.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

include(CPack)
