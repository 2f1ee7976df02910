# Lets the byte and packet counters of a scenario move: awk -f traffic.awk FILE.toml >live.toml
/^(bytes|packets)_[a-z]+ = [0-9]+$/ {
    $3 = "{ value = " $3 ", rate = 250000, period = 1, jitter = 40 }"
}
{ print }
