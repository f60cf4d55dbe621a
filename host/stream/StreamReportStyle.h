// The looks of the report page: light and dark, on screen and on paper.
#pragma once

namespace tarni::host {

inline constexpr auto kReportStyle = R"css(
:root { color-scheme: light dark; --page: #f4f5f7; --card: #fff; --ink: #1c2330; --soft: #667085;
  --line: #e3e6ec; --pass: #15803d; --pass-bg: #e7f6ec; --fail: #b42318; --fail-bg: #fdecea;
  --idle: #667085; --idle-bg: #eef0f4; --mark: #e4572e; --code: #f6f7f9; }
@media (prefers-color-scheme: dark) { :root { --page: #12151b; --card: #1b2029; --ink: #e6e9ef;
  --soft: #98a2b3; --line: #2c3340; --pass: #4ade80; --pass-bg: #14301f; --fail: #f97066;
  --fail-bg: #3a1a18; --idle-bg: #262c37; --idle: #98a2b3; --code: #161a21; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 15px/1.5 system-ui, "Segoe UI", Roboto, "Helvetica Neue", "DejaVu Sans", sans-serif; }
main, header > div { max-width: 1120px; margin: 0 auto; padding: 0 24px; }
header { background: var(--card); border-bottom: 1px solid var(--line); padding: 28px 0 24px; }
header.passed { border-top: 6px solid var(--pass); }
header.failed { border-top: 6px solid var(--fail); }
h1 { margin: 0 0 2px; font-size: 26px; letter-spacing: -.01em; display: flex; align-items: center;
  gap: 14px; flex-wrap: wrap; }
h2 { font-size: 16px; margin: 0; font-weight: 600; }
.line { color: var(--soft); font-family: ui-monospace, "DejaVu Sans Mono", monospace;
  font-size: 13px; overflow-wrap: anywhere; }
.badge { font-size: 13px; font-weight: 600; padding: 3px 12px; border-radius: 99px;
  letter-spacing: .01em; white-space: nowrap; }
.badge.passed { color: var(--pass); background: var(--pass-bg); }
.badge.failed { color: var(--fail); background: var(--fail-bg); }
.badge.idle { color: var(--idle); background: var(--idle-bg); }
dl.facts { display: flex; flex-wrap: wrap; gap: 14px 40px; margin: 20px 0 0; }
dl.facts dt { color: var(--soft); font-size: 12px; text-transform: uppercase;
  letter-spacing: .06em; }
dl.facts dd { margin: 0; font-size: 17px; font-weight: 600; font-variant-numeric: tabular-nums; }
.strip { display: flex; gap: 3px; margin-top: 20px; }
.strip a { flex: 1; min-width: 4px; height: 8px; border-radius: 2px; background: var(--line); }
.strip a.passed { background: var(--pass); }
.strip a.failed { background: var(--fail); }
.warning { background: #fff4d6; color: #6b4a00; border-radius: 8px; padding: 8px 14px;
  margin: 16px 0 0; }
main { padding-top: 24px; padding-bottom: 60px; }
.step { background: var(--card); border: 1px solid var(--line); border-radius: 12px;
  margin: 0 0 18px; overflow: hidden; box-shadow: 0 1px 2px rgb(16 24 40 / 6%); }
.step.failed { border-color: var(--fail); }
.step.idle { opacity: .7; }
.step > .top { display: flex; gap: 14px; align-items: center; padding: 14px 18px; }
.number { flex: none; width: 32px; height: 32px; border-radius: 50%; display: grid;
  place-items: center; font-weight: 700; font-size: 14px; background: var(--idle-bg);
  color: var(--idle); }
.passed .number { background: var(--pass-bg); color: var(--pass); }
.failed .number { background: var(--fail-bg); color: var(--fail); }
.what { flex: 1; min-width: 0; }
.what h2 { overflow-wrap: anywhere; }
.element { flex: none; max-width: 36%; max-height: 48px; outline: 1px solid var(--line);
  object-fit: contain; background: #fff; }
.time { flex: none; color: var(--soft); font-variant-numeric: tabular-nums; min-width: 54px;
  text-align: right; }
.pictures { display: grid; grid-template-columns: 1fr 1fr; gap: 18px; padding: 4px 18px 18px; }
figure { margin: 0; min-width: 0; }
figcaption { color: var(--soft); font-size: 12px; text-transform: uppercase; letter-spacing: .06em;
  margin-bottom: 6px; }
.shot { display: inline-block; vertical-align: top; position: relative; max-width: 100%;
  border: 1px solid var(--line); background: var(--code); }
.shot svg { position: absolute; inset: 0; width: 100%; height: 100%; }
.shot rect { fill: none; stroke: var(--mark); stroke-width: 2.5; }
.shot img { display: block; max-width: 100%; }
.why { margin: 0 18px 16px; padding: 10px 14px; border-radius: 8px; background: var(--fail-bg);
  color: var(--fail); overflow-wrap: anywhere; }
.note { margin: 0 18px 14px; color: var(--soft); }
details { margin: 0 18px 16px; }
summary { cursor: pointer; color: var(--soft); }
pre { background: var(--code); border: 1px solid var(--line); border-radius: 8px; padding: 12px 14px;
  margin: 10px 0 0; overflow: auto; max-height: 560px; line-height: 1.45;
  font: 12.5px/1.5 ui-monospace, "DejaVu Sans Mono", monospace; }
@media (max-width: 720px) { .pictures { grid-template-columns: 1fr; } .element { display: none; } }
@media print { .step { break-inside: avoid; box-shadow: none; } }
)css";

}  // namespace tarni::host
