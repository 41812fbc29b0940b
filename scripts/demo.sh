#!/usr/bin/env bash
# Builds the library and the tool, writes a sample repository and prints the
# JSON document of one of its platforms.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DZR_BUILD_TESTS=OFF >/dev/null
cmake --build build/release -j "$(nproc)"
tool=build/release/tools/zr-platform/zr-platform
sample=build/release/sample
rm -rf "$sample"
echo "== zr-platform gen-sample $sample"
"$tool" gen-sample "$sample"
echo "== zr-platform short $sample/acme_dc/acme_dc.zdf"
"$tool" short "$sample/acme_dc/acme_dc.zdf"
echo "== zr-platform json $sample/acme_dc/acme_dc.zdf"
"$tool" json "$sample/acme_dc/acme_dc.zdf"
echo "== zr-platform platforms $sample"
"$tool" platforms "$sample"
echo "== zr-platform query $sample/acme_dc/acme_dc.zdf hardwarePlatform.board"
"$tool" query "$sample/acme_dc/acme_dc.zdf" hardwarePlatform.board
echo "== zr-platform check $sample/acme_dc/acme_dc.zdf"
"$tool" check "$sample/acme_dc/acme_dc.zdf"
echo "== zr-platform emu-props $sample/acme_emb/hw/acme_emb.cfa acme_emb"
"$tool" emu-props "$sample/acme_emb/hw/acme_emb.cfa" acme_emb
