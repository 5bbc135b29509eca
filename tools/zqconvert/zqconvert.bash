# bash completion for zqconvert                             -*- shell-script -*-

_zqconvert() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
  # --option=value arrives as three words.
  if [[ $cur == "=" ]]; then
    cur=
  elif [[ $prev == "=" && $COMP_CWORD -gt 1 ]]; then
    prev=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  local options="--size --type --frames --crop --to --matrix --scale --quality --rotate --flip --format --stats -h
    --help --version --list-types"
  local types="i444 yuv444p i422 yuv422p i440 yuv440p i420 yuv420p iyuv i411 yuv411p yuyv yuy2 yuyv422 yvyu yvyu422 uyvy
    uyvy422 vyuy vyuy422 nv12 yv12 yv16 yuyv2 yvyu2 uyvy2 vyuy2 rgb565 rgb565le rgb16 rgb16alt bgr24 rgbp rgb888p nv21
    yuv-quarter-height"
  local raw="gbrp gray yuvj420p yuvj422p yuvj444p yuvj440p yuvj411p"
  local words
  case $prev in
    --type) words="$types $raw" ;;
    --to) words=$types ;;
    --matrix) words="bt601 bt709 grey" ;;
    --quality) words="0 1 2 3" ;;
    --rotate) words="left right 90 180 270" ;;
    --format) words="raw bmp png ppm y4m" ;;
    --size | --frames | --crop | --scale) words= ;;
    *)
      if [[ $cur == -* ]]; then
        words=$options
      else
        # Outside a completion there is nothing to tell.
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
      fi
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}

complete -F _zqconvert zqconvert
