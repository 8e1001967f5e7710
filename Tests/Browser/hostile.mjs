// A building whose names try to be more than names.

export const hostileNames = [
  '<script>window.hacked = 1</script>',
  '</script><script>window.hacked = 2</script>',
  '"><img src=x onerror="window.hacked = 3">',
  "' onfocus='window.hacked = 4' autofocus x='",
  '<!-- <script> -->',
  '{{data}} {{script}} ${window.hacked = 5}',
  'Tom & Jerry &amp; &lt;b&gt; \\u003c',
  'محطة القطار الرئيسية',
  'בית קפה 24',
  'رصيف 3 (A→B)',
  'Café ☕ 🚉 👩‍🦽',
  'line\u2028separator',
  'W'.repeat(120),
];

export const hostileTitle = '</title><script>window.hacked = 6</script> "Halle" & משרד';

function feature(type, coordinates, properties) {
  return { type: 'Feature', properties, geometry: { type, coordinates } };
}

export function hostileBuilding() {
  const at = (index) => [20 + (index % 4) * 0.0001, 10 + Math.floor(index / 4) * 0.0001];
  const room = [[[20, 10], [20.0004, 10], [20.0004, 10.0004], [20, 10.0004], [20, 10]]];
  return {
    type: 'FeatureCollection',
    name: hostileTitle,
    attribution: '<b onmouseover="window.hacked = 7">somebody</b>',
    licence: '"><svg onload="window.hacked = 8">',
    levels: [{ level: 0, name: '<i>Erdgeschoß</i> "0"' }, { level: 1, name: 'طابق' }],
    features: [
      feature('Polygon', room, { kind: 'room', level: 0, name: hostileNames[0], category: hostileNames[2] }),
      feature('Polygon', room, { kind: 'room', level: 1, name: hostileNames[7] }),
      feature('Point', at(0), { kind: 'node', id: 1, level: 0 }),
      feature('Point', at(1), { kind: 'node', id: 2, level: 0 }),
      feature('Point', at(1), { kind: 'node', id: 3, level: 1 }),
      feature('LineString', [at(0), at(1)], { kind: 'edge', from: 1, to: 2, type: '"><script>window.hacked = 9</script>' }),
      feature('LineString', [at(1), at(1)], { kind: 'edge', from: 2, to: 3, type: '<b>lift</b>' }),
      ...hostileNames.map((name, index) => feature('Point', at(index), { kind: 'place', name, level: 0, category: hostileNames[1] })),
    ],
  };
}
