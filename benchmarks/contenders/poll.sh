#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
#
# What people write instead: a script for a panel that shows what it prints, as Waybar and genmon do; the panel asks for
# a refresh with a signal. poll.sh TODAY WEEK (addresses)

fetch() { curl --silent --show-error --compressed --max-time 60 "$1"; }

poll() {
    today=$(fetch "$1" | jq -r '.data[0] | "\(.impressions) spend $\(.spend), \(.inline_link_clicks) clicks"') || return
    impressions=${today%% *}
    [ "$impressions" -le "$most" ] || changed=$(date +%s)
    most=$impressions
    dot=🟢
    [ $(($(date +%s) - changed)) -le 900 ] || dot=🔴
    echo "$dot $today"
    fetch "$2" | jq -r '.data[0]
        | [.actions[] | select(.action_type | IN("purchase", "lead")) | .value | tonumber] as $results
        | "7 days: $\(.spend), \(.impressions) impressions, reach \(.reach), results \($results | add)"'
}

most=0
changed=0
trap : USR1
while true; do
    poll "$@"
    sleep 600 &
    wait $!
    kill $! 2>/dev/null # a signal ends the waiting, not the sleep
done
