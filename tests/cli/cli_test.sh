#!/usr/bin/env bash
# The program as scripts use it: exit statuses, messages, files that appear whole or not at all, equal bytes.
# Usage: cli_test.sh PROGRAM
set -uo pipefail
program=$(readlink -f "$1")
folder=$(mktemp -d)
trap 'chmod -R u+rwx "$folder"; rm -rf "$folder"' EXIT
cd "$folder" || exit 1
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
faults=0

fault() {
  echo "FAULT: $*"
  faults=$((faults + 1))
}

# expect STATUS TEXT ARGUMENT...: runs the program and looks at its status and its error output.
expect() {
  local status=$1 text=$2 got
  shift 2
  "$program" "$@" >out.txt 2>err.txt
  got=$?
  ((got == status)) || fault "status $got instead of $status: $*: $(cat err.txt)"
  [[ -z $text ]] || grep -qF -- "$text" err.txt || fault "no \"$text\" from: $*: $(cat err.txt)"
}

same() { cmp -s "$1" "$2" || fault "$1 and $2 differ"; }

expect 0 "" --shape Hexagonal --set vtXNo=5 -o knot.svg -o knot.png -o knot.qzd -o knot.bmp
[[ ! -s err.txt ]] || fault "notes without a reason: $(cat err.txt)"
expect 0 "" knot.qzd -o again.png -o again.qzd -o again.svg
same knot.png again.png
same knot.qzd again.qzd
same knot.svg again.svg
for file in knot.*; do cp "$file" "first-$file"; done
LC_ALL=de_DE.UTF-8 "$program" --shape Hexagonal --set vtXNo=5 -o knot.svg -o knot.png -o knot.qzd -o knot.bmp
for file in knot.*; do same "$file" "first-$file"; done
grep -q $'\r$' knot.qzd || fault "knot files end their lines with CR LF"

expect 0 "" --random 99 --set vtEdge=99 --quiet -o a.svg
[[ ! -s err.txt ]] || fault "notes although --quiet: $(cat err.txt)"
expect 0 "" --random 99 --set vtEdge=99 --quiet -o b.svg
same a.svg b.svg
expect 0 "lorivan: --random" --random --shape 3 -o c.qzd
[[ $(head -1 c.qzd) == *,3$'\r' ]] || fault "a random knot has another shape than was asked for"
expect 0 "vtXNo=25 corrected to 20" --set vtXNo=25 -o d.svg
expect 0 "vtXNo=2 corrected to 4 for this shape" --shape Circular --set vtXNo=2 -o d.svg
[[ $("$program" --version) == "Lorivan 3.44k" ]] || fault "version"
expect 0 "" --set vtXNo=6 --set vtYNo=4 --strands 1 -o one.svg
expect 4 "the nearest found is 2" --set vtXNo=1 --set vtYNo=1 --strands 9 -o none.svg
expect 2 "--strands takes" --strands 0 -o none.svg
expect 6 "a window needs a desktop"
expect 0 "" --list parameters
grep -q vtXNo out.txt || fault "the list names no parameter"

# A knot file holds the whole knot: what it makes is what its maker would have made.
full=(--shape Square-Square --preset Gold --set vtSkew=1.5 --set chkMirror=1 --set vtRingPerc=75 --set vtPolySides=9)
expect 0 "" "${full[@]}" -o full.qzd -o full.svg -o full.wrl
grep -q '^[^=]*,vtSkew=1.5,.*chkMirror=1,txtCol0=' full.qzd || fault "names after the eight values: $(sed -n 2p full.qzd)"
expect 0 "" full.qzd -o same.qzd -o same.svg -o same.wrl
for file in qzd svg wrl; do same full.$file same.$file; done
grep -q = knot.qzd && fault "a knot of the first start's values has further fields"
expect 0 "" --preset Gold --set vtWidth=20 -o own.qzd
[[ $(sed -n 2p own.qzd | cut -d, -f5) == 20 ]] || fault "a style wins over a value"
# A stretch only draws a file's own lines, its wall among them, taller.
sed '5s/,1,2\r/,2,2\r/' knot.qzd >wall.qzd
expect 0 "" wall.qzd --set vtSkew=2 -o tall.qzd
cmp -s <(sed 1,2d wall.qzd | cut -d, -f1-7) <(sed 1,2d tall.qzd | cut -d, -f1-7) || fault "the wall is gone"
# An outline that is ahead of the grid leaves the grid that the file holds alone.
sed '1s/,0/,12/; 2s/\r/,outlineAhead=1,picShape=7500 6000 4 100 100 300 100 300 300 100 300 4 1 2 2 3 3 4 4 1\r/' \
  knot.qzd >ahead.qzd
expect 0 "" ahead.qzd -o kept.qzd
cmp -s <(tail -n +3 knot.qzd) <(tail -n +3 kept.qzd) || fault "an outline took the place of the file's grid"

# Crossings laid on top, or bands painted where they can be seen, in every picture.
expect 0 "" --set chkClassic=1 -o classic.svg -o classic.png
expect 0 "" -o shapes.svg -o shapes.png
grep -q over-crossings classic.svg || fault "classic joints are not laid on top"
grep -q over-crossings shapes.svg && fault "a first start lays stretches on top"
cmp -s classic.png shapes.png && fault "the joints are the same in both pictures"

# The knot that draws itself: the last frame is the still picture, and the SVG has the same strands.
shape=(--shape Circular --set vtAnimate=8)
expect 0 "" "${shape[@]}" -o still.svg -o still.png -o still.bmp --width 300
expect 0 "" "${shape[@]}" --animate -o moving.svg -o 'frame-%03d.png' -o 'b%d.bmp' --width 300
frames=(frame-*.png) bitmaps=(b*.bmp)
((${#frames[@]} > 50 && ${#frames[@]} == ${#bitmaps[@]})) || fault "${#frames[@]} frames"
expect 0 "" "${shape[@]}" --transparent --width 300 -o clear.bmp
same clear.bmp still.bmp
[[ ${frames[0]} == frame-001.png ]] || fault "the first frame is ${frames[0]}"
same "${frames[-1]}" still.png
cmp -s "${frames[0]}" "${frames[1]}" && fault "the first two frames are equal"
strandsOf() { grep -o 'id="strand-[0-9]*"' "$1"; }
[[ $(strandsOf moving.svg) == "$(strandsOf still.svg)" ]] || fault "the moving SVG has other strands"
grep -q " $(awk "BEGIN { print ${#frames[@]} * 0.022 }")s linear" moving.svg || fault "22 ms for each frame"
expect 0 "9 frames, one for every" "${shape[@]}" --animate -o 'few%01d.png' --width 300
same few9.png still.png
expect 2 "" --animate -o plain.png
expect 2 "does not go with --view 3d" --animate --view 3d -o x.svg
expect 5 "cannot write no/such" "${shape[@]}" --animate --width 100 -o 'lost%02d.png' -o no/such/x.svg
compgen -G '*lost*' >/dev/null && fault "frames were left although another output failed"

expect 0 "" "${shape[@]}" --mm 80 -o knot.emf -o world.wrl
grep -q 'Viewpoint {position 0 0 20}' world.wrl && fault "the viewer stays in the middle of a large knot"
expect 0 "--mm changes nothing in: png, pov" "${shape[@]}" --mm 80 --width 50 -o mm.png -o mm.pov -o two.png -o mm.stl
grep -q 'location <0,0,20.075>' mm.pov || fault "the viewer of a scene stands elsewhere"
[[ $(od -An -tx1 -j40 -N4 knot.emf) == " 20 45 4d 46" ]] || fault "no metafile"

expect 0 "" "${shape[@]}" --view 3d --set chkHeightMap=1 -o heights.png -o plain.emf
[[ $(od -An -tu1 -j18 -N2 heights.png) == "   7 208" ]] || fault "a height map is 2000 pixels wide"
[[ $(od -An -td4 -j32 -N4 plain.emf | tr -d ' ') == 26458 ]] || fault "a metafile is 264.58 mm wide"
expect 0 "" --set chkDXF2D=1 --set chkFullyCrossed=1 -o crossed.dxf
(($(grep -c POLYLINE crossed.dxf) == 3)) || fault "one whole line for each strand"

# Many knots in one run: each as its own run makes it, a failing one named, all of them on a sheet.
expect 0 "" --random 41..43 --preset Ink -o 'many-%d.svg' -o 'many-%03d.qzd' --sheet -o sheet.png -o sheet.svg
[[ $(ls many-* | wc -l) == 6 && -s sheet.png ]] || fault "files of a run: $(ls many-*)"
expect 0 "" --sweep vtXNo=3..1 --sweep vtSkew=0.8..1.2:0.2 -o 'grid-%02d-%d.svg' --sheet -o sheet.bmp --width 301
expect 0 "" --set vtXNo=2 --set vtSkew=1.2 -o one.svg
same one.svg grid-02-1.2.svg
[[ $(od -An -td4 -j18 -N4 sheet.bmp | tr -d ' ') == 301 ]] || fault "a sheet has another width than was asked for"
expect 4 "knot Sides 200: side-200.stl: Sorry, too many polygons" --sweep vtPolySides=10..200:190 --set vtXNo=20 --set vtYNo=20 \
  --set vtPolyPoints=4 -o 'side-%d.stl' -o 'side-%d.qzd'
[[ $(echo side-*) == "side-10.qzd side-10.stl" ]] || fault "what a failing knot left: $(echo side-*)"
expect 5 "cannot write no/such" --random 1..3 -o 'none-%d.svg' -o 'no/such/%d.svg'
compgen -G '*none*' >/dev/null && fault "a knot's files were left although one of them failed"
expect 2 "needs 1 of %d" --random 1..3 -o plain.svg
# Knots that are made at the same time are those that are made alone, and are told in their order.
expect 0 "" --random 1..40 -o 'many-%d.svg' -o 'many-%d.stl'
for seed in 1 23 40; do
  expect 0 "" --random "$seed" -o one.svg -o one.stl
  same one.svg "many-$seed.svg"
  same one.stl "many-$seed.stl"
done
expect 0 "knot 2: vtPolyRadius=" --random 1..2 --set vtPolyZF=0.5 --fit-radius 0 -o 'many-%d.stl'
expect 0 "" --random 1..2 --set vtPolyZF=0.5 --fit-radius 0 --quiet -o 'many-%d.stl'
[[ ! -s err.txt ]] || fault "notes of many knots although --quiet: $(cat err.txt)"
expect 4 "" --sweep vtXNo=1..9 --set vtYNo=1 --strands 4 -o 'four-%d.qzd'
[[ $(grep -o 'knot Columns [0-9]' err.txt | tr '\n' ' ') == "knot Columns 1 knot Columns 2 " && $(ls four-* | wc -l) == 7 ]] ||
  fault "order of faults, or files: $(cat err.txt)"
env --default-signal "$program" --random 1..20000 -o 'halt-%d.svg' >/dev/null 2>err.txt &
run=$!
for ((wait = 0; wait < 3000; ++wait)); do [[ -e halt-5.svg ]] && break || sleep 0.02; done
kill -TERM $run 2>/dev/null
wait $run
[[ $? == 143 ]] || fault "an interrupted run ends otherwise: $(cat err.txt)"
made=$(ls halt-* | wc -l)
[[ -s halt-$made.svg && -z $(find . -name '.lorivan-*') ]] || fault "an interrupted run leaves gaps or scraps"
rm -f halt-* many-*
# Options that no output follows are told, those that one output follows only where that matters.
expect 0 "--weld changes nothing in: svg, stl" --weld --binary --width 300 -o a.stl -o a.svg
grep -q -- "--binary" err.txt && fault "an option that stl follows is told: $(cat err.txt)"
grep -q -- "--width changes nothing in: svg, stl" err.txt || fault "--width is silent: $(cat err.txt)"
# What machines follow: closed outlines or centre lines, at the place and of the size asked for.
cut=(--shape Square-Square --set vtEdge=2 --mm 80)
expect 0 "--outline changes nothing in: png" "${cut[@]}" --outline --kerf 0.2 --origin corner -o cut.svg -o cut.pdf -o cut.dxf -o cut.png
grep -q 'viewBox="0 0 80.2 ' cut.svg || fault "the page is not the knot's: $(grep viewBox cut.svg)"
[[ $(grep -c '<path' cut.svg) == $(grep -c LWPOLYLINE cut.dxf) ]] || fault "SVG and DXF hold other lines"
grep -qE 'id="(grid|background)"' cut.svg && fault "an outline file shows more than outlines"
grep -aq '/MediaBox \[ 0 0 227.338' cut.pdf || fault "the PDF page is not 80.2 mm wide"
expect 0 "" --set vtXNo=4 --set vtYNo=3 --fit --height 50 --outline --kerf 1 --origin corner -o high.svg
grep -q 'height="51mm"' high.svg || fault "a kerf takes from the height: $(grep '<svg' high.svg)"
expect 0 "the kerf is wider" --set vtXNo=4 --set vtYNo=3 --fit --mm 40 --height 50 --outline --kerf 1 --origin corner -o low.svg
grep -q 'width="41mm"' low.svg || fault "a height that is not reached takes from the width: $(grep '<svg' low.svg)"
expect 0 "" "${cut[@]}" --outline --kerf 0 -o none.dxf
expect 0 "" "${cut[@]}" --outline -o plain.dxf
cmp -s none.dxf plain.dxf || fault "a kerf of 0 is none"
expect 0 "" "${cut[@]}" --lines -o lines.svg -o lines.dxf
expect 0 "" "${cut[@]}" --lines --set chkFullyCrossed=1 -o whole.svg
expect 0 "" --set vtWidth=30 --lines -o wide-lines.svg
[[ ! -s err.txt ]] || fault "centre lines need no room: $(cat err.txt)"
(($(grep -c '<path' whole.svg) < $(grep -c '<path' lines.svg))) || fault "whole lines are not fewer"
expect 0 "" "${cut[@]}" --outline --arcs -o arcs.dxf
(($(stat -c %s arcs.dxf) < $(stat -c %s cut.dxf))) || fault "arcs save nothing"
expect 0 "outlines are" --shape Circular --set vtXNo=4 --set vtYNo=7 --fit --outline -o wide.svg
grep -q ' d=""' wide.svg && fault "a path leads nowhere"
expect 0 "the kerf is wider" --mm 80 --outline --kerf 20 -o kerf.dxf
expect 0 "" --set chkDXF2D=1 --origin corner --mm 80 -o corner.dxf
grep -q "changes nothing" err.txt && fault "a flat DXF has an origin: $(cat err.txt)"
expect 0 "--origin changes nothing in: dxf" --origin corner -o faces.dxf -o page.svg
grep -q 'viewBox="0 0 132' page.svg && fault "the corner is the picture's and not the knot's"
for words in "--outline --lines" "--mm 0" "--kerf 0.2" "--arcs" "--outline --animate" "--origin middle" \
  "--material silver" "--outline --mm 5 --kerf 5" "--outline --set vtXNo=19 --set vtYNo=1 --kerf 20"; do
  # shellcheck disable=SC2086
  expect 2 "" $words -o never.svg
done
# Models: sizes, second files, height maps, and knots that come out of them again.
expect 0 "" --shape Star -o star.qzd --weld --binary -o star.3mf -o star.glb -o star.obj -o star.stl
for file in star.3mf star.glb; do
  expect 0 "" $file -o again.qzd
  same star.qzd again.qzd
done
expect 0 "" --shape Star -o twice.3mf -o twice.glb
same star.3mf twice.3mf
same star.glb twice.glb
grep -q 'mtllib star.mtl' star.obj && grep -q newmtl star.mtl || fault "no materials beside a welded OBJ"
(($(od -An -tu4 -j80 -N4 star.stl) * 50 + 84 == $(stat -c %s star.stl))) || fault "no binary STL"
expect 5 "cannot write no/such" --weld -o lost.obj -o no/such/x.svg
compgen -G 'lost*' >/dev/null && fault "materials were left although another output failed"
expect 0 "relief.png: 0." --shape Star --mm 50 --width 80 --relief --base 3 -o relief.png -o relief.stl
grep -q "mm changes nothing" err.txt && fault "a height map has a size"
expect 0 "at a width of 11 mm" --shape Star --relief --height 10 --mm 20 -o high.png
expect 0 "--relief changes nothing in: obj" --relief -o tubes.obj
expect 0 "" -o plain.obj
same plain.obj tubes.obj
[[ $(od -An -tu1 -j24 -N2 relief.png) == "  16   0" ]] || fault "a height map has 16 bits"
grep -q 'vertex 50.000 0.000 3.000' relief.stl || fault "a relief's plate is 3 mm thick"
expect 2 "--base needs --relief or --solid" --base 3 -o knot.stl
expect 5 "too large" --random 1..2 --sheet --width 2000000000 -o huge.svg
expect 5 "too small" --outline --mm 0.01 -o tiny.dxf
expect 4 "make it less fine" --relief --width 4000 -o fine.stl

expect 0 "overlaps itself; fusing the strands to one body heals it" --set vtPolyRadius=10 --set vtXNo=6 --set vtYNo=4 -o thick.stl
expect 0 "" -o thin.stl
grep -q overlaps err.txt && fault "tubes that are apart overlap"

# Shapes of one's own get an AutoGrid.
square='7500,6000 4 100,100 300,100 300,300 100,300 4'
echo "$square 1,2 2,3 3,4 4,1" >square.qzc
expect 0 "" square.qzc --set vtGridSize=4 --set chkShapeT=0 -o square.svg -o square.qzd
(($(wc -l <square.qzd) == 2 + 40)) || fault "4 x 4 cells have 40 lines"
expect 0 "" square.qzd -o again.svg
same square.svg again.svg
expect 0 "" square.qzc --set vtGridSize=4 -o triangles.svg
cmp -s square.svg triangles.svg && fault "squares and triangles are equal"
expect 0 "" square.qzc --sweep vtGridSize=3..4 -o 'square-%d.svg' -o 'square-%d.qzd'
same square-4.svg triangles.svg
echo '7500,6000 4 50,50 440,50 440,340 50,340 4 1,2 2,3 3,4 4,1' >large.qzc
expect 4 "This knot would be too complicated. Reduce the AG factor and try again" large.qzc \
  --set vtGridSize=50 -o never.svg
most=$(sed -n 's/.*The largest AG factor that works here is //p' err.txt)
expect 0 "" large.qzc --set vtGridSize="${most:-50}" --fit -o most.svg
echo "$square 1,2 2,3 3,4 -1,-1" >open.qzc
expect 4 "There is no closed outline" open.qzc -o never.svg
expect 2 "a shape file brings its own shape" square.qzc --random -o never.svg

# So do drawings and pictures without a knot in them.
echo "<svg><circle r='9'/>
<circle r='4'/></svg>" >ring.svg
expect 0 "" ring.svg --set vtGridSize=9 -o ring.qzd -o knot.svg
expect 0 "" knot.svg -o ring2.qzd
same ring.qzd ring2.qzd
expect 2 "--random does not go with it" ring.svg --random -o never.svg
cp ring.svg drawn.svg
expect 2 "choose another name" drawn.svg -o other.qzd -o ./drawn.svg
same ring.svg drawn.svg
printf '0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n40\n9\n0\nTEXT\n0\nENDSEC\n' >disc.dxf
expect 0 "disc.dxf: 1 of kind TEXT left out" disc.dxf --set vtGridSize=9 -o disc.qzd
expect 0 "" disc.qzd --set vtWidth=40 -o fat.bmp
expect 0 "" fat.bmp --set vtGridSize=9 -o traced.qzd
grep -q picShape= traced.qzd || fault "a traced picture has no outline"

# What cannot be read: status 3, the line and the reason, and nothing written.
head=$'20,0\r\n30,2,2,12,7,10,3,5\r\n'
printf '%s' "$head" >nolines.qzd
head -c 3000 "$program" >binary.qzd
: >empty.qzd
printf '<svg>\n<path d="M 0 x"/></svg>' >bad.svg
echo "no picture" >bad.jpg
echo GIF89a >bad.gif
mkdir folder.qzd
while IFS='|' read -r file text; do
  expect 3 "$text" "$file" -o never.svg
  grep -qF "$file" err.txt || fault "the message does not name $file"
done <<'CASES'
nolines.qzd|line 3: the knot has no lines
binary.qzd|line 1:
empty.qzd|line 1: the file is empty
folder.qzd|it is a folder
missing.qzd|No such file
bad.svg|bad.svg, line 2: a path cannot be read
bad.jpg|it is no BMP, PNG or JPEG picture
bad.gif|no knot, drawing or picture that can be read: line 1
CASES
[[ ! -e never.svg ]] || fault "an output was written for a bad input"
{ printf '%s' "$head" && printf '%d,0,%d,0,0,0,1,0\r\n' $(seq 10 10 900); } >many.qzd
expect 0 "6 more strands are not drawn" many.qzd -o many.svg

printf '20,0\r\n30,2,2\r\n' >star.qzd
for ((i = 0; i < 14; ++i)); do printf '0,0,%d,50,0,25,1,0\r\n' "$((i * 5))" >>star.qzd; done
expect 4 "Sorry, this knot has too many lines connected to a single point" star.qzd -o never.svg
expect 4 "too many polygons" --set vtXNo=20 --set vtPolySides=200 --set vtPolyPoints=50 --view 3d -o never.png

# What cannot be written: status 5, the old file as it was, and no scraps.
echo old >old.svg
ln -s /dev/full full.stl
expect 5 "cannot write full.stl" --shape Star -o old.svg -o full.stl
[[ $(cat old.svg) == old ]] || fault "an output was replaced although another failed"
mkdir folder.svg
expect 5 "it is a folder" -o folder.svg
expect 5 "too large" --width 2000000000 -o huge.png
(ulimit -v 1500000 && faults=0 && expect 5 "not enough memory" -o old.svg --width 15000 -o huge.bmp; exit "$faults") ||
  faults=$((faults + 1))
[[ -z $(find . -name '*.part') ]] || fault "scraps were left: $(find . -name '*.part')"

# However a run is ended before its time, it leaves no scraps, and ends as that signal ends a program. One file
# is complete when it waits for a reader of the other.
mkfifo pipe.svg
for signal in HUP INT QUIT PIPE TERM XCPU XFSZ; do
  (ulimit -c 0 && exec env --default-signal "$program" -o first.svg -o pipe.svg) &
  run=$!
  until compgen -G '.lorivan-*.part' >/dev/null; do kill -0 "$run" || break; sleep 0.01; done
  kill -"$signal" "$run"
  wait "$run" 2>/dev/null
  got=$?
  ((got == 128 + $(kill -l "$signal"))) || fault "SIG$signal ends a run with $got"
  [[ -z $(find . -name '*.part') && ! -e first.svg ]] || fault "SIG$signal leaves $(find . -name '*.part')"
done
"$program" -o first.svg -o pipe.svg &
run=$!
until compgen -G '.lorivan-*.part' >/dev/null; do kill -0 "$run" || break; sleep 0.01; done
kill -KILL "$run"
wait "$run" 2>/dev/null
expect 0 "" -o first.svg
[[ -z $(find . -name '*.part') ]] || fault "the scraps of a killed run stay"
ln -s /dev/stdout stdout.svg
"$program" -o stdout.svg | cmp -s - first.svg || fault "a link to the standard output fails"
(echo before && "$program" -o stdout.svg) >second.svg
[[ $(head -1 second.svg) == before ]] || fault "the standard output is written over"
same first.svg <(tail -n +2 second.svg)
got=$(mkdir gone && cd gone && rmdir ../gone && "$program" -o x.svg 2>&1; echo $?)
[[ $got == "lorivan: cannot write x.svg: No such file or directory"*5 ]] || fault "in a removed folder: $got"

# Rights do not bind root: these are tried as somebody else.
chmod 755 "$folder" && touch secret.qzd && chmod 0 secret.qzd
mkdir locked && echo old >locked/x.svg && chmod 555 locked
asUser=()
((EUID == 0)) && asUser=(setpriv --reuid=65534 --regid=65534 --clear-groups)
if "${asUser[@]}" test -x "$program"; then
  realProgram=$program
  asSomebody() { "${asUser[@]}" "$realProgram" "$@"; }
  program=asSomebody
  expect 3 "ermission denied" secret.qzd -o /dev/null/never.svg
  expect 5 "ermission denied" -o locked/x.svg
  program=$realProgram
  [[ $(cat locked/x.svg) == old ]] || fault "a file in a locked folder was replaced"
  # All or none: only when it is to take its name does the second file turn out to belong to somebody else.
  if ((EUID == 0)); then
    mkdir sticky && echo old | tee sticky/a.svg sticky/b.svg >/dev/null
    chmod 666 sticky/*.svg && chown 65534 sticky/a.svg && chmod 1777 sticky
    program=asSomebody
    expect 5 "cannot write sticky/b.svg" -o sticky/a.svg -o sticky/new.svg -o sticky/b.svg
    program=$realProgram
    [[ $(ls -A sticky) == $'a.svg\nb.svg' && $(cat sticky/*) == $'old\nold' ]] ||
      fault "files took their names although another could not: $(ls -A sticky)"
  fi
fi

expect 0 "" -o "Knöten und 結.svg"
[[ -s "Knöten und 結.svg" ]] || fault "a name with other letters"

# Models as things to be made.
expect 0 "touching at 0 of 12 crossings: they will move" "--mm" 60 -o loose.stl
expect 4 "" --mm 60 --check
grep -q "^fault .* 3 loose pieces" out.txt || fault "the verdict does not tell of loose pieces: $(cat out.txt)"
whole=(--set vtPolyZF=0.5 --mm 60 --tube 4 --solid --flat)
expect 0 "1 piece, touching at 12 of 12" "${whole[@]}" --cells 4 -o whole.stl -o whole.obj
grep -q "^solid 1 piece" whole.stl || fault "the body's name does not tell its pieces"
expect 0 "whole.3mf: 1 piece" "${whole[@]}" --cells 4 -o whole.qzd --binary --weld -o whole.3mf -o whole.glb -o body.stl -o body.obj
triangles=$(grep -c facet.normal whole.stl)
(($(od -An -tu4 -j80 -N4 body.stl) == triangles)) || fault "text and binary are not the same body"
same whole.obj body.obj
expect 0 "" whole.3mf -o again.qzd
same whole.qzd again.qzd
expect 0 "" "${whole[@]}" --check --material silver
grep -q "^weight .*silver" out.txt || fault "no weight: $(cat out.txt)"
expect 2 "--solid makes" --flat -o x.stl
expect 2 "do not go together" --relief --solid -o x.stl
expect 2 "no underside" --set vtRingPerc=75 --solid --base 2 -o x.stl
expect 2 "does not go with -o" --check -o x.stl
expect 2 "one knot at a time" --check --sweep vtXNo=2..4
expect 2 "need the width" --solid --height 20 -o x.stl

((faults == 0)) && echo "all as expected"
exit $((faults > 0))
