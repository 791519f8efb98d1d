# Set-up shared by ./demo, ./test and ./bench/run: the Debian packages they need, and the Python that runs the
# generator. Sourced by bash, in the root of the checkout.

# What a build of the library, the command line and the examples needs.
build_packages=(g++ cmake ninja-build python3 liblmdb-dev libcrypt-dev libcli11-dev
                libxxhash-dev nlohmann-json3-dev)
# What testing needs on top: the second compiler with its sanitizers (llvm puts names and lines
# into their reports), the format check, the test and benchmark frameworks, other programs' opinion
# on sums, and the library of one of them to measure beside ours.
test_packages=(clang libclang-rt-14-dev llvm clang-format clang-tidy libgtest-dev libbenchmark-dev
               sqlite3 libsqlite3-dev ledger)
# What measuring needs: the frameworks of the benchmarks and of the program that loads a company, the
# peer to be measured beside, its command, and plots.
bench_packages=(libbenchmark-dev libgtest-dev libsqlite3-dev sqlite3 python3-matplotlib)

# Ends the script with a message on standard error.
fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# Installs those of the named Debian packages that are missing, and says which. Says nothing where
# none is.
install_missing() {
  if ! command -v dpkg-query >/dev/null; then
    printf 'This is not a Debian system. Please see to it that these are here: %s\n' "$*" >&2
    return
  fi
  local package missing=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null) == installed* ]] ||
      missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  local as_root=(env)
  if ((EUID != 0)); then
    command -v sudo >/dev/null ||
      fail "Please install these packages as root: apt-get install ${missing[*]}"
    as_root=(sudo env)
  fi
  printf 'Installing Debian packages: %s\n' "${missing[*]}"
  local log
  log=$(mktemp)
  if ! { "${as_root[@]}" apt-get update &&
         "${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get install --yes \
             --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    rm -f "$log"
    fail "The packages could not be installed."
  fi
  rm -f "$log"
}

# Prints the path of a Python that is new enough for the generator. The first one on the PATH may
# be an older one that a user keeps beside Debian's own.
find_python() {
  local python
  for python in "$(command -v python3)" /usr/bin/python3; do
    # Its own word for where it is, since the name on the PATH may be a wrapper that asks a
    # version manager. tomllib came with 3.11.
    [[ -x $python ]] && "$python" -c 'import sys, tomllib; print(sys.executable)' 2>/dev/null &&
      return
  done
  fail "Python 3.11 or newer is needed, and there is none."
}
