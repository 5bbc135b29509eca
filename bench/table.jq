# Tables from the JSON of a run: medians of the repetitions, in Markdown. Ratios are this library's time by the other's.

def fixed(digits):
  . * pow(10; digits) | round / pow(10; digits) | tostring
  | if digits == 0 then .
    else (split(".") + [""])[0:2] | .[0] + "." + (.[1] + "000")[0:digits] end;
def time: if . == null then "" elif . < 10 then fixed(3) else fixed(1) end;
def ratio(mine; theirs): if mine == null or theirs == null then null else mine / theirs end;
def shown: if . == null then "" else fixed(2) end;
def row: "| " + join(" | ") + " |";
def mean: map(log) | add / length | exp;

[ .benchmarks[] | select(.aggregate_name == "median")
  | (.run_name | split("/")) as $part
  | { family: $part[0], job: $part[1], size: $part[2], library: $part[3], pixel: .ns_per_pixel, call: .cpu_time } ]
  as $runs
| ([ $runs[] | select(.pixel != null and .size != "16x16") ]) as $frames
| ([ $frames[].size ] | unique | sort_by(split("x")[0] | tonumber)) as $sizes
# One object a job and size: times by library, ratios.
| [ $frames | group_by([.family, .job, .size])[]
    | (map({ key: .library, value: .pixel }) | from_entries) as $time
    | .[0] + { time: $time.zqcc, yuv: ratio($time.zqcc; $time.libyuv), sws: ratio($time.zqcc; $time.swscale) } ]
  as $cells
| ([ $frames[] | [.family, .job] ] | reduce .[] as $key ([]; if index([$key]) then . else . + [$key] end)) as $jobs

| if ($jobs | length) > 0 then
    "Each cell group: ns per output pixel, ratio to libyuv, ratio to libswscale (below 1: this library is faster).",
    "",
    ([ "family/job", ($sizes[] | ., "/libyuv", "/swscale") ] | row),
    ([ "---", ($sizes[] | "---:", "---:", "---:") ] | row),
    ( $jobs[] as [$family, $job]
      | [ "\($family)/\($job)",
          ( $sizes[] as $size
            | (first($cells[] | select(.family == $family and .job == $job and .size == $size)) // {})
            | (.time | time), (.yuv | shown), (.sws | shown) ) ]
      | row ),
    "",
    "Geometric means of the ratios over jobs and sizes:",
    "",
    (["family", "/libyuv", "/swscale"] | row),
    (["---", "---:", "---:"] | row),
    ( ([ $jobs[][0] ] | reduce .[] as $key ([]; if index([$key]) then . else . + [$key] end))[] as $family
      | [ $cells[] | select(.family == $family) ]
      | [ $family,
          ([ .[].yuv | values ] | if length > 0 then mean | shown else "" end),
          ([ .[].sws | values ] | if length > 0 then mean | shown else "" end) ]
      | row )
  else empty end,
  ( [ $runs[] | select(.pixel == null or .size == "16x16") ]
    | if length > 0 then
        "",
        "Microseconds a call:",
        "",
        (["call", "zqcc", "libyuv", "swscale"] | row),
        (["---", "---:", "---:", "---:"] | row),
        ( . as $calls
          | ([ .[] | [.family, .job, .size] ] | reduce .[] as $key ([]; if index([$key]) then . else . + [$key] end))[]
            as [$family, $job, $size]
          | [ $calls[] | select(.family == $family and .job == $job and .size == $size)
              | { key: .library, value: (.call / 1000) } ]
          | from_entries
          | [ "\($family)/\($job) \($size)", (.zqcc | time), (.libyuv | time), (.swscale | time) ]
          | row )
      else empty end ),
  ( [ .benchmarks[] | select(.error_occurred == true) | "\(.run_name): \(.error_message)" ] | unique
    | if length > 0 then "", "Not measured:", .[] else empty end )
