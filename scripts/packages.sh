# Installs the Debian packages that are missing; sourced by run.sh and test.sh.

build_packages="g++ cmake ninja-build pkg-config python3 libcups2-dev libharfbuzz-dev libdeflate-dev libfontconfig-dev
qt6-base-dev libxcb1-dev libdbus-1-dev libpng-dev libjpeg-dev libtiff-dev libleptonica-dev libxml2-dev fonts-liberation nasm"

test_packages="libgtest-dev poppler-utils qpdf cups-daemon cups-client cups-filters cups-ipp-utils avahi-daemon ghostscript xvfb xdotool dbus-daemon at-spi2-core libglib2.0-bin
clang-format clang-tidy zsh zbar-tools zxing-cpp-tools libzint-dev imagemagick netpbm dosbox clang libclang-rt-14-dev"

# The Windows program is cross-built, and tested under Wine.
windows_packages="g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-win32 googletest wine wine64 locales xauth"

# What makes the packages of a release, and looks at them.
packaging_packages="debhelper fakeroot lintian nsis zip man-db desktop-file-utils mmdebstrap"

# What makes the handbook.
handbook_packages="weasyprint python3-markdown python3-pil poppler-utils xvfb xauth fonts-liberation fonts-lato fonts-dejavu-core
cups-daemon cups-client cups-filters xdotool imagemagick faketime"

# What the programs of bench/ are built with.
bench_packages="libzint-dev libxcb1-dev libxtst-dev libpoppler-cpp-dev"

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# need_packages PACKAGE...: does nothing where all of them are installed.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
