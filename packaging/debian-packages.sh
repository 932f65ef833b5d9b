# The Debian 12 packages that Kalvo needs, in one place; read by ./run and ./test.

buildPackages=(
    g++ cmake ninja-build pkg-config
    qt6-base-dev qt6-svg-dev qt6-translations-l10n libgl-dev
    libsdl2-dev libpulse-dev libmpg123-dev libvorbis-dev libopusfile-dev libsndfile1-dev libsamplerate0-dev
    libebur128-dev libsoundtouch-dev
    libtag1-dev libsqlite3-dev libsodium-dev libcpp-httplib-dev libqrencode-dev
)

# HTML from docs/handbuch; 8 MB to fetch, 43 MB on the disk. The program runs without it.
handbookPackages=(python3-sphinx)

testPackages=(
    libgtest-dev libgmock-dev clang-format
    lame vorbis-tools opus-tools sox id3v2 python3-mutagen
    pulseaudio pulseaudio-utils xvfb tzdata
    dbus at-spi2-core gir1.2-atspi-2.0 python3-gi
    clang libclang-rt-dev
    playerctl desktop-file-utils appstream shared-mime-info libglib2.0-bin
)

tidyPackages=(clang-tidy)

# For packaging/paket and packaging/paket-pruefen.
packagingPackages=(dpkg-dev file gzip)
checkPackages=(debootstrap lintian)

# InstallMissing PACKAGE...: installs what is not there yet; asks for the administrator's password only then.
InstallMissing() {
    local package missing=() asRoot=()
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ! command -v apt-get >/dev/null; then
        echo "Diese Pakete fehlen und müssen von Hand installiert werden: ${missing[*]}" >&2
        return 1
    fi
    ((EUID == 0)) || asRoot=(sudo)
    echo "Es werden installiert: ${missing[*]}"
    "${asRoot[@]}" apt-get update -qq &&
        "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
