# The Debian 12 packages that the project needs, in one place. Read by run.sh, test.sh and bench.sh.
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
)

# To run it.
packages_run=(
    fonts-liberation         # stands in for Arial and Courier New, with their metrics
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

# To test it.
packages_test=(
    ccache                   # makes the second build a short one
    clang                    # the compiler that the two checkers bring their rules for
    clang-format             # layout of the sources
    clang-tidy               # the checker of the language
    clazy                    # the checker of the toolkit's traps
    libclang-rt-14-dev       # the sanitizers that go with clang
    git                      # lists the sources
    locales                  # makes the German locale of the system tests
)

# To measure it.
packages_bench=(
    xdotool                  # waits for the main window
    libbenchmark-dev         # Google Benchmark
    valgrind                 # counts instructions
    python3-matplotlib       # draws the picture of the simulated observers
)
