# The Debian 12 packages that the project needs, in one place. Read by run.sh, test.sh, bench.sh and
# package.sh.
# shellcheck shell=bash disable=SC2034

# To build the program.
packages_build=(
    cmake                    # configures
    g++                      # compiles
    ninja-build              # runs the build
    qt6-base-dev             # Core, Gui, Widgets, PrintSupport and Test
    qt6-webengine-dev        # the view of reports and documents
    qt6-tools-dev            # tells cmake of LinguistTools
    qt6-l10n-tools           # lrelease and lupdate, for the catalogues
    libxcb1-dev              # the protocol of the screen: asks the server whether it has drawn
    libxcb-present-dev       # when it has refreshed the screen
    libxcb-randr0-dev        # how often it does
)

# To run it.
packages_run=(
    fonts-liberation         # stands in for Arial and Courier New, with their metrics
    qt6-translations-l10n    # the toolkit's own words ("Cancel") in the program's languages
)

# To make its Debian package.
packages_package=(
    dpkg-dev                 # finds the packages of the libraries that the program needs
)

# To play a test on a virtual screen, where there is no display.
packages_screen=(
    xvfb                     # the screen
    xauth                    # Xvfb's own companion
    openbox                  # the window manager: full screen, focus, close
    python3                  # the robot
    python3-xlib             # its keys, clicks and looks at the screen
    poppler-utils            # pdftotext, which reads the report back
)

# To watch a screen from outside, and to press keys at known moments.
packages_witness=(
    libxcb-damage0-dev       # tells of every drawing, as soon as it is on the screen
    libxcb-xtest0-dev        # keys and clicks, as if a keyboard and a mouse had sent them
    libxcb-keysyms1-dev      # which key makes which letter
)

# To test it.
packages_test=(
    appstream                # checks what software centres are told
    ccache                   # makes the second build a short one
    clang                    # the compiler that the two checkers bring their rules for
    clang-format             # layout of the sources
    clang-tidy               # the checker of the language
    clazy                    # the checker of the toolkit's traps
    desktop-file-utils       # checks the entry in the desktop's menu
    libclang-rt-14-dev       # the sanitizers that go with clang
    git                      # lists the sources
    imagemagick              # takes the transparency out of the images that have none
    librsvg2-bin             # draws the images from their sources
    locales                  # makes the German locale of the system tests
    mandoc                   # checks the manual pages
)

# To make the pictures of its documents anew.
packages_stills=(
    python3-pil              # cuts and scales what the robot sees, and saves it in a few colours
)

# To measure it.
packages_bench=(
    xdotool                  # waits for the main window
    libbenchmark-dev         # Google Benchmark
    valgrind                 # counts instructions
    python3-matplotlib       # draws the picture of the simulated observers
)
