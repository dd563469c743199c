#!/bin/bash
# Brings the catalogues in languages/ up to the texts of the sources. New texts stand there unfinished,
# for a translator; ./test.sh says when a catalogue is behind.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

for language in "${all_languages[@]}"; do
    renew_catalogue "$language" "languages/kelmoran_$language.ts" || die "can't renew $language"
done
