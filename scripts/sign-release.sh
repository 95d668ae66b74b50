#!/usr/bin/env bash
# Makes the release key pair and signs a release for the online update (needs only openssl 3).
#
#   sign-release.sh keygen KEY.pem
#       writes a new private key (readable by you alone) and prints its public key: the value for
#       the CMake variable TAVO_UPDATE_PUBLIC_KEY or the variable TAVOMP3_UPDATE_PUBLIC_KEY.
#   sign-release.sh pubkey KEY.pem
#       prints the public key of KEY.pem.
#   sign-release.sh sign KEY.pem PLAYER_VERSION UPDATER_VERSION FILE... > Versions.txt
#       prints the version list: "TavoMP3Player: <major.minor>", "TavoMP3Update: <revision>", a
#       "File: <name> <size> <signature>" line for each FILE (named as on the server, e.g.
#       TavoMP3Player and TavoMP3Update) and a last "Signature:" line over everything before it.
#
# Keys and signatures are Ed25519, written as base64 of the raw 32 and 64 bytes.
set -euo pipefail

usage() {
    sed -n '2,14p' "$0" | sed 's/^# \{0,1\}//' >&2
    exit 2
}

public_key() { openssl pkey -in "$1" -pubout -outform DER | tail -c 32 | base64 -w0; }
signature() { openssl pkeyutl -sign -inkey "$1" -rawin -in "$2" | base64 -w0; }

case "${1:-}" in
keygen)
    [[ $# -eq 2 ]] || usage
    [[ ! -e $2 ]] || { echo "$2 exists already; not overwritten" >&2; exit 1; }
    (umask 077 && openssl genpkey -algorithm ed25519 -out "$2")
    public_key "$2"
    echo
    ;;
pubkey)
    [[ $# -eq 2 ]] || usage
    public_key "$2"
    echo
    ;;
sign)
    [[ $# -ge 5 ]] || usage
    key=$2 player=$3 updater=$4
    shift 4
    [[ $player =~ ^[0-9]+\.[0-9]+$ ]] || { echo "player version must be <major>.<minor>" >&2; exit 2; }
    [[ $updater =~ ^[0-9]+$ ]] || { echo "updater version must be a number" >&2; exit 2; }
    list=$(mktemp)
    trap 'rm -f "$list"' EXIT
    {
        printf 'TavoMP3Player: %s\r\nTavoMP3Update: %s\r\n' "$player" "$updater"
        for file in "$@"; do
            name=$(basename "$file")
            [[ $name != *[[:space:]]* ]] || { echo "file names must not contain blanks: $name" >&2; exit 2; }
            printf 'File: %s %s %s\r\n' "$name" "$(stat -c %s "$file")" "$(signature "$key" "$file")"
        done
    } >"$list"
    printf 'Signature: %s\r\n' "$(signature "$key" "$list")" >>"$list"
    cat "$list"
    ;;
*)
    usage
    ;;
esac
