#!/usr/bin/env bash
# Wall and CPU time a clip: the program, beside a bare copy-write-flush-rename loop, and beside exiftool.
#   clips.sh ZONSTORY BARE_LOOP STORY WORK_DIR [COUNT...]      COUNT: clips a run, 1 200 2000 by default
# With BIG=1 also a clip of 2 GB, which takes 7 GB of disk. What is compared is run in turns, ROUNDS times (3 unless given),
# and the least of each counts: what else the machine does only ever adds.
set -euo pipefail
zonstory=$1 bare=$2 story=$3 work=$4
shift 4
counts=("$@")
[ ${#counts[@]} -gt 0 ] || counts=(1 200 2000)
rounds=${ROUNDS:-3}

rm -rf "$work"
mkdir -p "$work/masters"
export XDG_STATE_HOME=$work/state # where runs are recorded
trap 'rm -rf "$work"' EXIT
make() { ffmpeg -v error -nostdin "$@"; }
make -f lavfi -i testsrc2=duration=1:size=320x180:rate=25 -f lavfi -i sine=duration=1 -c:v mpeg4 -c:a aac "$work/masters/clip.mp4"
make -i "$work/masters/clip.mp4" -c copy "$work/masters/clip.mov"
make -i "$work/masters/clip.mp4" -c:v mjpeg -c:a pcm_s16le "$work/masters/clip.avi"
make -f lavfi -i sine=duration=1 "$work/masters/clip.wav"
make -i "$work/masters/clip.mp4" -c copy "$work/masters/clip.mkv"

# fresh MASTER COUNT: that many new copies in $work/run, and their names in $work/names
fresh() {
    rm -rf "$work/run"
    mkdir "$work/run"
    for ((i = 1; i <= $2; i++)); do cp "$work/masters/$1" "$work/run/$(printf '%05d' "$i").${1##*.}"; done
    printf '%s\n' "$work"/run/* >"$work/names"
    sync -f "$work/run"
}

# The contenders; each works on $work/run.
bare_loop() { xargs -a "$work/names" -d '\n' -n 5000 "$bare" 3; }
write_one_job() { "$zonstory" write "$story" --scene 3 --jobs 1 "$work/run"; }
write_without_journal() { "$zonstory" write "$story" --scene 3 --no-journal "$work/run"; }
write_default() { "$zonstory" write "$story" --scene 3 "$work/run"; }
exiftool_at_once() { exiftool -q -overwrite_original -XMP-xmpDM:Scene=3 -@ "$work/names"; }
exiftool_each() { while read -r clip; do exiftool -q -overwrite_original -XMP-xmpDM:Scene=3 "$clip"; done <"$work/names"; }
show() { "$zonstory" show "$work/run"; }
diff_of_drafts() { "$zonstory" diff "$story" "$story" "$work/run"; }

# compare MASTER COUNT WHAT CONTENDER...: a line for each, its ratio that to the first
compare() {
    local master=$1 count=$2 what=$3 round contender times
    shift 3
    TIMEFORMAT='%R %U %S'
    for ((round = 0; round < rounds; round++)); do
        for contender in "$@"; do
            fresh "$master" "$count"
            times=$({ time "$contender" >"$work/log" 2>&1; } 2>&1) || { cat "$work/log" >&2; exit 1; }
            echo "$contender $times"
        done
    done | awk -v what="$what" -v n="$count" '
        { wall = $2; cpu = $3 + $4 }
        !($1 in least) { order[++last] = $1; least[$1] = wall; work[$1] = cpu }
        wall < least[$1] { least[$1] = wall }
        cpu < work[$1] { work[$1] = cpu }
        END {
            for (i = 1; i <= last; i++) {
                name = order[i]
                label = name
                gsub("_", " ", label)
                printf "%-28s %-18s %9.2f %9.2f %8.2f\n", what, label, 1000 * least[name] / n, 1000 * work[name] / n, \
                    least[order[1]] ? least[name] / least[order[1]] : 0
            }
        }'
}

model=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | sed -n 1p)
printf '%s, %s processors, %s, load %s; %s\n' "$model" "$(nproc)" "$(df --output=fstype "$work" | tail -1)" \
    "$(cut -d' ' -f1 /proc/loadavg)" "$(date -u '+%Y-%m-%d %H:%M UTC')"
printf '%-28s %-18s %9s %9s %8s\n' 'milliseconds a clip' '' wall CPU ratio
for count in "${counts[@]}"; do
    for kind in mp4 mov avi wav mkv; do
        label="$count $kind"
        [ "$kind" != mkv ] || label+=', sidecars'
        compare "clip.$kind" "$count" "$label" bare_loop write_one_job write_default
    done
done
for count in "${counts[@]}"; do
    compare clip.mp4 "$count" "$count mp4, journal" write_without_journal write_default
done
rounds=1 compare clip.mp4 200 '200 mp4' write_default write_one_job exiftool_at_once
rounds=1 compare clip.mp4 20 '20 mp4' write_default write_one_job exiftool_each
compare clip.mp4 1 '1 mp4' show
cp "$work/masters/clip.mp4" "$work/masters/written.mp4"
"$zonstory" write "$story" --scene 3 --quiet "$work/masters/written.mp4"
compare written.mp4 2000 '2000 mp4 with a scene' show diff_of_drafts

for megabytes in 50 $([ "${BIG:-0}" != 1 ] || echo 2000); do
    make -f lavfi -i "anoisesrc=duration=$((megabytes * 1000000 / 192000))" -ac 1 -ar 96000 -c:a pcm_s16le "$work/masters/big.wav"
    rounds=1 compare big.wav 1 "1 wav of $megabytes MB" bare_loop write_one_job
    rm "$work/masters/big.wav"
done
