# Read by cpack, once a generator. A .deb installs into /usr and nowhere else, so its files are installed for that prefix;
# an archive is unpacked anywhere.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_SET_DESTDIR ON)
  set(CPACK_INSTALL_PREFIX /usr)
endif()
