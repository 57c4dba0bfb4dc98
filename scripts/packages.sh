# shellcheck shell=bash
# The Debian packages that each kind of work needs; the only place that names them.

# shellcheck disable=SC2034  # read by lib.sh through their names
{
    # What a build of the program needs.
    packagesToBuild=(
        g++ cmake ninja-build pkg-config libicu-dev libexpat1-dev zlib1g-dev libgcrypt20-dev
        qt6-base-dev qt6-svg-dev libpoppler-qt6-dev libqt6svg6 librsvg2-bin fonts-dejavu-core
    )
    # Since Debian 13, what draws the icons of windows is in a package of its own.
    if ! grep --quiet --line-regexp --fixed-strings 'VERSION_ID="12"' /etc/os-release 2>/dev/null; then
        packagesToBuild+=(qt6-svg-plugins)
    fi

    # What the tests need besides.
    packagesToTest=(
        libgtest-dev libgmock-dev nlohmann-json3-dev lld openssl attr acl libcap2-bin rsync strace util-linux
        xvfb xauth openbox xclip xdotool dbus dbus-daemon libglib2.0-bin thunar
        at-spi2-core python3-pyatspi python3-gi gir1.2-atspi-2.0 imagemagick x11-utils
        zsh fish man-db desktop-file-utils appstream shared-mime-info xdg-utils file xfsprogs btrfs-progs dosfstools
    )

    # What scripts/format needs; scripts/lint needs all groups.
    packagesToFormat=(clang-format-19)
    packagesToLint=(clang-19 clang-tidy-19 libclang-rt-19-dev)

    # What scripts/fuzz needs besides a build.
    packagesToFuzz=(clang-19 libclang-rt-19-dev nlohmann-json3-dev)

    # What scripts/coverage, and scripts/fuzz with --coverage, need besides.
    packagesToCoverage=(gcovr llvm-19)

    # What scripts/package needs besides a build; with --check it needs what the tests do, too.
    packagesToPackage=(dpkg-dev binutils lintian man-db desktop-file-utils appstream debootstrap)

    # What scripts/check-macos needs besides a build.
    packagesToCheckMacOS=(
        clang-19 llvm-19 lld-19 libc++-19-dev musl-dev libgtest-dev libgmock-dev file
        fpc-source-3.2.2 librust-core-foundation-sys-dev librust-libc-dev libgnustep-base-dev
    )

    # What the benchmarks need besides.
    packagesToBenchmark=(libbenchmark-dev libxcb1-dev file libimage-exiftool-perl)
}
