// Makes the pages that the tests look at.
//
//   node makepages.mjs TOOL SOURCE_FOLDER OUTPUT_FOLDER

import { execFileSync } from 'node:child_process';
import { mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { campusBuilding } from './campus.mjs';
import { hostileBuilding } from './hostile.mjs';
import { upstairsBuilding } from './upstairs.mjs';

const [tool, source, output] = process.argv.slice(2);
const terminal = join(source, 'Examples/Buildings/terminal.building.geojson');
const golden = (name) => join(source, 'Tests/Golden', name);
const made = (name) => join(output, name);

function run(...words) {
  execFileSync(tool, words, { stdio: ['ignore', 'inherit', 'inherit'] });
}

function draw(name, building, ...options) {
  run('draw', building, ...options, '-o', made(`${name}.html`));
}

mkdirSync(output, { recursive: true });
run('simulate', terminal, '--from', 'Main entrance', '--to', 'Gate B4', '--noise', '2', '--detour', '-o', made('walk.trace.ndjson'));
writeFileSync(made('hostile.building.geojson'), JSON.stringify(hostileBuilding()));
writeFileSync(made('upstairs.building.geojson'), JSON.stringify(upstairsBuilding()));
writeFileSync(made('campus.building.geojson'), JSON.stringify(campusBuilding()));

draw('plain', terminal);
draw('graph', terminal, '--graph');
draw('route', terminal, '--route', 'Main entrance', 'Gate B4');
draw('upstairs', made('upstairs.building.geojson'), '--route', 'Foot of the stairs', 'Attic');
draw('walk', terminal, '--trace', made('walk.trace.ndjson'));
draw('denied', golden('corridor.building.geojson'), '--trace', golden('deniers.trace.ndjson'));
draw('anew', golden('corridor.building.geojson'), '--trace', golden('direct.trace.ndjson'));
draw('hostile', made('hostile.building.geojson'));
draw('campus', made('campus.building.geojson'));
draw('empty', golden('empty.building.geojson'));
