# Debian packages that each job needs, and their installation. Sourced by ./check and ./demo.

declare -rA packagesOf=(
  [build]="g++ cmake ninja-build pkg-config python3 libgtest-dev libcli11-dev nlohmann-json3-dev
           locales libcurl4-openssl-dev libssl-dev nginx-light libnginx-mod-http-brotli-filter"
  [arm64]="g++-aarch64-linux-gnu libc6-dev-arm64-cross qemu-user googletest"
  [clang]="clang libclang-rt-14-dev"
  [format]="clang-format git"
  [tidy]="clang-tidy"
  [shell]="shellcheck"
  [coverage]="gcovr"
  [bench]="libbenchmark-dev wget2-dev libxml2-dev libgumbo-dev libpcre2-dev liburiparser-dev
           libcurl4-openssl-dev"
  [growth]="libbenchmark-dev"
  [oracles]="nodejs npm"
  [browser]="chromium openssl wget python3-lxml"
  [save]="wget2"
  [abi]="abigail-tools"
  [package]="dpkg-dev fakeroot file lintian"
  [docs]="doxygen python3 groff-base"
)

asRoot() {
  if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

isInstalled() {
  [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# Installs the packages of the named jobs that are not there yet.
installFor() {
  local job package missing=()
  for job in "$@"; do
    for package in ${packagesOf[$job]}; do
      isInstalled "$package" || missing+=("$package")
    done
  done
  if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}" >&2
    asRoot apt-get update -qq
    asRoot env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  fi
}
