# What quickstart, check and .ci/run share; read with `.`, from the root of the source tree.

say() { printf '==> %s\n' "$*"; }
fail() { printf '%s: %s\n' "${0##*/}" "$*" >&2; exit 1; }

BUILD_PACKAGES="g++ cmake ninja-build ccache libcli11-dev libfmt-dev nlohmann-json3-dev libssl-dev openssl"
TEST_PACKAGES="libgtest-dev ca-certificates libengine-gost-openssl pkg-config"
CI_PACKAGES="clang-14 clang-format-14 libclang-rt-14-dev libbenchmark-dev python3"

# Installs what is missing of the Debian packages named, quietly, unless INSTALL is no.
install_packages() {
    missing=""
    for package in "$@"; do
        case $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) in
            installed) ;;
            *) missing="$missing $package" ;;
        esac
    done
    [ -n "$missing" ] || return 0
    [ "$INSTALL" = yes ] || { say "Not installed, and not asked to install:$missing"; return 0; }
    as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "needs root or sudo to install:$missing (--no-install skips this)"
        as_root=sudo
    fi
    say "Installing with apt:$missing"
    log=$(mktemp)
    # shellcheck disable=SC2086  # a list of words is meant
    if ! { $as_root apt-get update && $as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "apt could not install:$missing"
    fi
    rm -f "$log"
}

# run_quietly DOING COMMAND...: shows the command's output only if it fails.
run_quietly() {
    doing=$1
    shift
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "$doing failed"
    fi
    rm -f "$log"
}

# run_tests PRESET: says how many passed and were skipped, and shows what failed.
run_tests() {
    log=$(mktemp)
    if ctest --preset "$1" -j "$(nproc)" >"$log" 2>&1; then
        grep -e ' tests passed, ' -e '^Total Test time' "$log"
        echo "$(grep -c '\*\*\*Skipped' "$log" || true) tests skipped"
        rm -f "$log"
    else
        grep -v -e '^ *Start ' -e ' Passed ' "$log" >&2
        rm -f "$log"
        fail "tests failed"
    fi
}

parse_install_option() {
    INSTALL=yes
    for argument in "$@"; do
        case $argument in
            --no-install) INSTALL=no ;;
            -h | --help) usage; exit 0 ;;
            *) usage >&2; exit 2 ;;
        esac
    done
}
