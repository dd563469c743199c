# The Debian package: `cpack` in a build folder in which all is built, or ./package.sh.

set(KELMORAN_CONTACT "Kelmoran maintainers <kelmoran@localhost>" CACHE STRING
    "Who answers for the package: a name and an address")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelmoran)
set(CPACK_PACKAGE_CONTACT ${KELMORAN_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "visual and cognitive tests for an assessor and a patient")
set(CPACK_PACKAGE_DESCRIPTION
"An instrument for clinics and research: one assessor tests one patient's sight,
attention, movement perception and memory for places in front of a calibrated
screen. Each test takes over the whole screen, shows timed stimuli on black and
leaves plain files and a report of one page. It speaks English, French, German,
Italian, Spanish and Dutch. There is no server and no network.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library tells: the fonts that the layout of the stimuli counts on, and the toolkit's own
# words in the program's languages.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, qt6-translations-l10n")
# Reports and the instruction book are opened by the desktop's viewer.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, evince | pdf-viewer")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups")

include(CPack)
