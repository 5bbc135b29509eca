# bash completion for zqconvert                             -*- shell-script -*-

_zqconvert() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
  # --option=value arrives as three words.
  if [[ $cur == "=" ]]; then
    cur=
  elif [[ $prev == "=" && $COMP_CWORD -gt 1 ]]; then
    prev=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  # The two libraries have options and types of their own.
  local classic="" word
  for word in "${COMP_WORDS[@]}"; do
    [[ $word != --classic ]] || classic=yes
  done
  local options="--size --frames --crop --to --matrix --scale --rotate --flip --format --stats --classic -h --help
    --version --list-types"
  local types="i444 yuv444p i422 yuv422p i440 yuv440p i420 yuv420p iyuv i411 yuv411p yuyv yuy2 yuyv422 yvyu yvyu422 uyvy
    uyvy422 vyuy vyuy422 nv12 yv12 yv16 yuyv2 yvyu2 uyvy2 vyuy2 rgb565 rgb565le rgb16 rgb16alt bgr24 rgbp rgb888p nv21
    yuv-quarter-height"
  local raw="gbrp yuvj420p yuvj422p yuvj444p yuvj440p yuvj411p"
  local outputs="i444 yuv444p i422 yuv422p i420 yuv420p iyuv yuyv yuy2 yuyv422 yvyu yvyu422 uyvy uyvy422 vyuy vyuy422
    nv12 yv12 yv16 rgb565 rgb565le rgb16 rgb16alt bgr24 nv21 rgb565be rgb24 rgba bgra grey gray y8"
  local matrices="bt601 bt709 bt2020"
  if [[ $classic ]]; then
    options="$options --type --quality"
    outputs=$types
    raw="$raw gray"
    matrices="bt601 bt709 grey"
  else
    options="$options --from --filter --range --siting --dither --threads"
    types="$types rgb565be rgb24 rgba bgra grey gray y8"
  fi
  local words
  case $prev in
    --from | --type) words="$types $raw" ;;
    --to) words=$outputs ;;
    --matrix) words=$matrices ;;
    --filter) words="bilinear nearest area" ;;
    --range) words="limited full" ;;
    --siting) words="left centre" ;;
    --dither) words="none ordered" ;;
    --quality) words="0 1 2 3" ;;
    --rotate) words="left right 90 180 270" ;;
    --format) words="raw bmp png ppm y4m" ;;
    --size | --frames | --crop | --scale | --threads) words= ;;
    *)
      if [[ $prev == --flip && ! $classic ]]; then
        words="h v"
      elif [[ $cur == -* ]]; then
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
