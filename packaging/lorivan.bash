# Completion for bash. Written by lorivan_package_texts from the program's tables; do not edit.

# _lorivan_offer WORD...: those that begin with what has been typed.
_lorivan_offer() {
  local word
  for word; do
    word=$(printf '%q' "$word")
    [[ $word == "$cur"* ]] && COMPREPLY+=("$word")
  done
}

# _lorivan_offer_fields FIELD=...: a field, then, of a check box, its value. The shell may have parted "a=b".
_lorivan_offer_fields() {
  local word
  if [[ $field ]]; then
    [[ $field == chk* ]] && _lorivan_offer 0 1
    return
  fi
  compopt -o nospace 2>/dev/null
  if [[ $cur == chk*=* ]]; then
    _lorivan_offer "${cur%%=*}=0" "${cur%%=*}=1"
  else
    for word; do [[ $word == "$cur"* ]] && COMPREPLY+=("$word"); done
  fi
}

# _lorivan_offer_files EXTENSIONS: folders, and files with one of these.
_lorivan_offer_files() {
  local file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    [[ -d $file || ${file,,} =~ \.($1)$ ]] && COMPREPLY+=("$file")
  done < <(compgen -f -- "$cur")
}

# _lorivan_offer_outputs EXTENSIONS: the same, and behind a dot the extensions for a new file.
_lorivan_offer_outputs() {
  local extension
  _lorivan_offer_files "$1"
  [[ ${cur##*/} == ?*.* ]] || return
  for extension in ${1//|/ }; do
    [[ $extension == "${cur##*.}"* ]] && COMPREPLY+=("${cur%.*}.$extension")
  done
}

_lorivan() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} field=
  COMPREPLY=()
  if [[ $cur == = ]]; then
    cur= field=$previous previous=${COMP_WORDS[COMP_CWORD - 2]}
  elif [[ $previous == = ]]; then
    field=${COMP_WORDS[COMP_CWORD - 2]} previous=${COMP_WORDS[COMP_CWORD - 3]}
  fi
  case $previous in
    -o)
      _lorivan_offer_outputs 'qzd|svg|pdf|png|bmp|emf|pov|wrl|obj|stl|3mf|glb|xyz|gmv|dxf'
      return ;;
    --shape)
      _lorivan_offer 'Square-Square' 'Square-Triangle' 'Triangle' 'Hexagonal' 'Circular' 'Octagonal' 'Diamond1' 'Diamond2' 'Cross' 'Star' 'Spiral' 'Regular Hexagonal'
      return ;;
    --preset)
      _lorivan_offer 'Illuminated' 'Ink' 'Stone' 'Gold' 'Ribbon' 'Thread' 'Stained Glass' 'Forest' 'Sea' 'Woodcut' 'Classic'
      return ;;
    --set)
      _lorivan_offer_fields 'vtXNo=' 'vtYNo=' 'vtCrossOffset=' 'vtGridSize=' 'vtStartColour=' 'vtWidth=' 'vtScale=' 'vtSwish=' 'vtSmooth=' 'vtSkew=' 'vtEdge=' 'vtAnimate=' 'vtPolySides=' 'vtPolyPoints=' 'vtPolyRadius=' 'vtPolySmooth=' 'vtPolyZF=' 'vtRingPerc=' 'vtPicKnotBackColour=' 'vtTheta=' 'vtPhi=' 'vtPsi=' 'vtKa=' 'vtKd=' 'vtKs=' 'vtNFact=' 'vtKDist=' 'chkShowGrid=' 'chkShowCrossings=' 'chkDXF2D=' 'chkFullyCrossed=' 'chkShapeT=' 'chkHeightMap=' 'chkAnimate=' 'chkLoop=' 'chkConstantShape=' 'chkMirror=' 'chkFitBands=' 'chkClassic=' 'chkSmooth=' 'chkWrap='
      return ;;
    --sweep)
      _lorivan_offer_fields 'vtXNo=' 'vtYNo=' 'vtCrossOffset=' 'vtGridSize=' 'vtStartColour=' 'vtWidth=' 'vtScale=' 'vtSwish=' 'vtSmooth=' 'vtSkew=' 'vtEdge=' 'vtAnimate=' 'vtPolySides=' 'vtPolyPoints=' 'vtPolyRadius=' 'vtPolySmooth=' 'vtPolyZF=' 'vtRingPerc=' 'vtPicKnotBackColour=' 'vtTheta=' 'vtPhi=' 'vtPsi=' 'vtKa=' 'vtKd=' 'vtKs=' 'vtNFact=' 'vtKDist='
      return ;;
    --strands)
      _lorivan_offer 'most'
      return ;;
    --view)
      _lorivan_offer '2d' '3d'
      return ;;
    --origin)
      _lorivan_offer 'corner'
      return ;;
    --material)
      _lorivan_offer 'resin' 'pla' 'nylon' 'brass' 'bronze' 'silver' 'gold14k' 'gold18k'
      return ;;
    --list)
      _lorivan_offer 'parameters' 'shapes' 'presets' 'formats'
      return ;;
    --width | --mm | --height | --kerf | --frame | --inner | --tube | --fillet | --cells | --fit-radius | --base)
      return ;;
  esac
  if [[ $cur == -* ]]; then
    _lorivan_offer '-o' '--shape' '--preset' '--set' '--random' '--sweep' '--sheet' '--strands' '--view' '--width' '--mm' '--height' '--outline' '--kerf' '--lines' '--arcs' '--origin' '--frame' '--inner' '--tube' '--solid' '--fillet' '--flat' '--cells' '--fit-radius' '--check' '--material' '--fit' '--transparent' '--animate' '--weld' '--binary' '--relief' '--base' '--quiet' '--list' '--help' '--version'
  else
    _lorivan_offer_files 'qzd|qzc|svg|pdf|png|3mf|glb|svg|dxf|bmp|png|jpg|jpeg'
  fi
}
complete -F _lorivan lorivan
