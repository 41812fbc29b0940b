#!/usr/bin/env bash
# Builds the library and the tool, writes a sample repository and shows what
# the tool answers over it: a platform's documents, the registry, a query, the
# support verdicts of a catalog, and an emulation property script.
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
# Platforms whose support verdicts differ, judged with the sample exception list
# installed below an application root named after a product the list names.
policy=build/release/policy-sample
root=build/release/selbrook
rm -rf "$policy" "$root"
mkdir -p "$root/platforms"
cp build/release/platforms/achromatic "$root/platforms/"
echo "== zr-platform gen-sample $policy --count 1 --policy"
"$tool" gen-sample "$policy" --count 1 --policy
echo "== zr-platform --app-root $root catalog $policy (name and verdict of each platform)"
"$tool" --app-root "$root" catalog "$policy" | grep -E '"(baseName|warranty|warrantyReason)"'
for name in acme_policy_current acme_policy_refused acme_policy_legacy; do
  echo "== zr-platform --app-root $root check $policy/$name/$name.zdf"
  "$tool" --app-root "$root" check "$policy/$name/$name.zdf"
done
echo "== zr-platform emu-props $sample/acme_emb/hw/acme_emb.cfa acme_emb"
"$tool" emu-props "$sample/acme_emb/hw/acme_emb.cfa" acme_emb
