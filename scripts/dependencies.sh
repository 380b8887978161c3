# Sourced by the commands of the README: makes sure that the Debian packages which the build needs are there.
# Nothing is installed when nothing is missing, so the commands also run without a network. What is there
# is not upgraded, unless a missing package demands it.

packages=(
    g++ cmake ninja-build ccache
    openjdk-17-jdk-headless junit5
    libclang-14-dev
    sqlite3 libsqlite3-dev nlohmann-json3-dev libpolyclipping-dev libcsv-dev libfmt-dev
    libgtest-dev libgmock-dev libbenchmark-dev librecast-dev
    libjts-java fonts-dejavu-core
    clang-format-14 binutils
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done

if [ ${#missing[@]} -gt 0 ]; then
    if ! command -v apt-get >/dev/null; then
        printf 'This system has no apt-get. The build needs what Debian 12 calls: %s\n' "${packages[*]}" >&2
        exit 1
    fi
    if [ "$(id -u)" = 0 ]; then
        as_root=()
    elif command -v sudo >/dev/null; then
        as_root=(sudo)
    else
        printf 'These packages are missing; install them as root: %s\n' "${missing[*]}" >&2
        exit 1
    fi
    printf 'Installing: %s\n' "${missing[*]}"
    as_root+=(env DEBIAN_FRONTEND=noninteractive)
    # Another source of packages that this system knows may be out of reach; whether the packages come is what counts.
    "${as_root[@]}" apt-get update -qq || printf 'Not every list of packages could be fetched; going on with those at hand.\n' >&2
    "${as_root[@]}" apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null
fi
