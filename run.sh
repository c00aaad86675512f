#!/usr/bin/env bash
# Installs what is missing, builds, and opens the workbench in a bench folder with a simulated box on COM 9.
# Without a display it runs the tour of the same forms instead, which leaves its files in out/.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

usage() {
  cat << 'TEXT'
Usage: ./run.sh [FOLDER] [--slave] [--cards]
  FOLDER   the folder to work in, made if need be (else bench-data/)
  --slave  the simulated box has a slave, whose tune differs from the box's
  --cards  with a simulated Chipdrive, its card in FOLDER/card.kxs, and a card in the box's socket
TEXT
}

fail() {
  echo "run.sh: $*" >&2
  exit 1
}

folder=
cards=
box_options=()
for argument; do
  case $argument in
    --slave) box_options+=(--slave-image "$root/data/demo.kxs") ;;
    --cards) cards=yes && box_options+=(--card) ;;
    --help | -h) usage && exit 0 ;;
    -*) usage >&2 && fail "unknown option $argument" ;;
    *)
      [ -z "$folder" ] || fail "more than one folder: $folder, $argument"
      folder=$argument
      ;;
  esac
done

"$root/scripts/setup.sh"
"$root/scripts/build.sh" release
programs=$root/build/release/bin

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  cd "$root"
  exec "$programs/bench_tour"
fi

bench=${folder:-$root/bench-data}
mkdir -p "$bench" || fail "the folder $bench cannot be made."
bench=$(cd "$bench" && pwd)
for file in "$root"/data/*; do
  [ -e "$bench/${file##*/}" ] || cp "$file" "$bench/" || fail "$bench cannot be written."
done
# The manual is the program's and not the user's: each run brings the one of this tree.
manual=$bench/manual
if ! [ "$manual" -ef "$root/docs/manual" ]; then
  mkdir -p "$manual" || fail "the folder $manual cannot be made."
  cp -R "$root/docs/manual/." "$manual/" || fail "$manual cannot be written."
fi
link=$bench/simulated-box
"$root/scripts/set_ini_key.sh" "$bench/KXBenchPro.ini" com_device9 "$link"
"$root/scripts/set_ini_key.sh" "$bench/KXBenchPro.ini" comport1 9

# The program looks for the libraries of card readers beside itself alone: this copy finds the simulated ones.
program=$programs/kxbench
if [ -n "$cards" ]; then
  mkdir -p "$bench/program"
  cp "$program" "$root"/build/release/simulated-readers/* "$bench/program/" || fail "$bench cannot be written."
  program=$bench/program/kxbench
  export KXSIM_CARD=$bench/card.kxs
  [ -e "$KXSIM_CARD" ] || cp "$bench/demo.kxs" "$KXSIM_CARD"
fi

# Ctrl+C, a closed terminal and the closed window all end here, and both programs end with the script.
started=()
finish() {
  trap - EXIT
  kill "${started[@]}" 2> /dev/null || true
  wait
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

exec 3< <(exec "$programs/kxbox_sim" --link "$link" --image "$bench/demo_box.kxs" --die-with-parent \
  "${box_options[@]}")
started+=($!)
read -r -t 10 _ <&3 || fail "the simulated box did not start."

cd "$bench"
"$program" &
started+=($!)
wait $!
