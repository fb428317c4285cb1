#!/usr/bin/env bash
# Lets a client that others have written read from norda-ecu: values that a drive is known to have,
# through the adapter on a pseudo terminal. The client comes from npm's registry into build/client.
set -euo pipefail
cd "$(dirname "$0")/.."

if ! command -v npm >/dev/null; then
    echo "Skipped: npm is missing, which installs the client."
    exit 0
fi

folder=$PWD/build/client
mkdir -p "$folder"
if [ ! -d "$folder/node_modules/obd2-over-serial" ]; then
    npm install --prefix "$folder" --no-audit --no-fund obd2-over-serial@0.3.0 >"$folder/npm.log" 2>&1 || {
        tail -n 20 "$folder/npm.log" >&2
        exit 1
    }
fi

cat >"$folder/drive.log" <<'DRIVE'
(1.0) can0 7E8#04410C1AF8
(1.1) can0 7E8#0341057B
(61.0) can0 7E8#04410C1AF8
(61.1) can0 7E8#0341057B
DRIVE
rm -f "$folder/obd"
build/release/bin/norda-ecu --pty "$folder/obd" --source "$folder/drive.log" >"$folder/ecu.log" 2>&1 &
ecu=$!
trap 'kill "$ecu" 2>/dev/null || true' EXIT
for _ in $(seq 100); do
    [ -L "$folder/obd" ] && break
    sleep 0.1
done
sleep 0.5 # until the drive has its first values

read_values=$(NODE_PATH="$folder/node_modules" node tests/client.js "$folder/obd")
echo "The client has read: $read_values"
[ "$read_values" = "1726 rpm, 83 degrees" ] || {
    echo "Expected: 1726 rpm, 83 degrees" >&2
    exit 1
}
