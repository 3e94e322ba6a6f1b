#!/usr/bin/env bash
# Wall and CPU time a clip: the program, beside a bare copy-write-flush-rename loop, and beside exiftool.
#   clips.sh ZONSTORY BARE_LOOP STORY WORK_DIR [COUNT...]      COUNT: clips a run, 1 200 2000 by default
# With BIG=1 also a clip of 50 MB and one of 2 GB, which takes 7 GB of disk.
set -euo pipefail
zonstory=$1 bare=$2 story=$3 work=$4
shift 4
counts=("$@")
[ ${#counts[@]} -gt 0 ] || counts=(1 200 2000)

rm -rf "$work"
mkdir -p "$work/masters"
make() { ffmpeg -v error -nostdin "$@"; }
make -f lavfi -i testsrc2=duration=1:size=320x180:rate=25 -f lavfi -i sine=duration=1 -c:v mpeg4 -c:a aac "$work/masters/clip.mp4"
make -i "$work/masters/clip.mp4" -c copy "$work/masters/clip.mov"
make -i "$work/masters/clip.mp4" -c:v mjpeg -c:a pcm_s16le "$work/masters/clip.avi"
make -f lavfi -i sine=duration=1 "$work/masters/clip.wav"
make -i "$work/masters/clip.mp4" -c copy "$work/masters/clip.mkv"

# fresh MASTER COUNT: that many new copies in $work/run
fresh() {
    rm -rf "$work/run"
    mkdir "$work/run"
    for ((i = 1; i <= $2; i++)); do cp "$work/masters/$1" "$work/run/$(printf '%05d' "$i").${1##*.}"; done
    sync "$work/run"
}

# measure WHAT COUNT COMMAND...: a line of milliseconds a clip
measure() {
    local what=$1 count=$2
    shift 2
    local times
    TIMEFORMAT='%R %U %S'
    times=$({ time "$@" >"$work/out.log" 2>&1; } 2>&1)
    awk -v what="$what" -v n="$count" '{printf "%-44s %10.2f %10.2f\n", what, 1000 * $1 / n, 1000 * ($2 + $3) / n}' <<<"$times"
}

printf '%-44s %10s %10s\n' 'milliseconds a clip' wall CPU
for count in "${counts[@]}"; do
    for kind in mp4 mov avi wav; do
        fresh "clip.$kind" "$count"
        measure "$count $kind, bare loop" "$count" "$bare" 3 "$work"/run/*
        fresh "clip.$kind" "$count"
        measure "$count $kind, zonstory write" "$count" "$zonstory" write "$story" --scene 3 "$work/run"
    done
    fresh clip.mkv "$count"
    measure "$count mkv with sidecar, zonstory write" "$count" "$zonstory" write "$story" --scene 3 "$work/run"
done

fresh clip.mp4 200
measure '200 mp4, exiftool, one process' 200 exiftool -q -overwrite_original -XMP-xmpDM:Scene=3 -ext mp4 "$work/run"
fresh clip.mp4 20
one_each() { for clip in "$work"/run/*; do exiftool -q -overwrite_original -XMP-xmpDM:Scene=3 "$clip"; done; }
measure '20 mp4, exiftool, a process a clip' 20 one_each
fresh clip.mp4 1
measure '1 mp4, zonstory show' 1 "$zonstory" show "$work/run"

if [ "${BIG:-0}" = 1 ]; then
    for megabytes in 50 2000; do
        make -f lavfi -i "anoisesrc=duration=$((megabytes * 1000000 / 192000))" -ac 1 -ar 96000 -c:a pcm_s16le "$work/masters/big.wav"
        fresh big.wav 1
        measure "$megabytes MB wav, bare loop" 1 "$bare" 3 "$work/run/00001.wav"
        fresh big.wav 1
        measure "$megabytes MB wav, zonstory write" 1 "$zonstory" write "$story" --scene 3 "$work/run"
        rm "$work/masters/big.wav"
    done
fi
rm -rf "$work"
