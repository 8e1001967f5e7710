// Small arrows along the route, which say where it leads.

/** Pixels from one to the next; and how much of a way there must be for one. */
const APART = 52;
const LEAST = 26;

class Chevrons {
  constructor(viewport, levels) {
    this.viewport = viewport;
    this.levels = levels;
    this.group = drawn('g', { id: 'chevrons' });
    viewport.onChange(() => this.rescale());
  }

  show(points, level) {
    this.points = points;
    this.level = level;
    this.levels.putUnderMarks(this.group);
    this.draw();
  }

  /** Draws again when the distance between two has changed too much to the eye. */
  rescale() {
    const grown = this.viewport.scale / this.scale;
    if (grown > 1.3 || grown < 0.75) this.draw();
  }

  draw() {
    this.scale = this.viewport.scale;
    const stretches = stretchesOn(this.points ?? [], this.level);
    this.group.replaceChildren(...stretches.flatMap((stretch) => chevronsAlong(stretch, this.scale)));
  }
}

/** The stretches of the way on a level, each a list of positions. */
function stretchesOn(points, level) {
  const stretches = [];
  points.forEach((point, index) => {
    if (point[2] !== level) return;
    if (index > 0 && points[index - 1][2] === level) stretches.at(-1).push(point);
    else stretches.push([point]);
  });
  return stretches;
}

/** Evenly from end to end. They hang on the end, which stays while the person walks. */
function chevronsAlong(stretch, scale) {
  const chevrons = [];
  let next = LEAST / scale;
  let passed = 0;
  for (let i = stretch.length - 1; i > 0; i -= 1) {
    const [[x1, y1], [x2, y2]] = [stretch[i - 1], stretch[i]];
    const length = Math.hypot(x2 - x1, y2 - y1);
    for (; length > 0 && next < passed + length; next += APART / scale) {
      const part = (next - passed) / length;
      chevrons.push(chevronMark(x2 + (x1 - x2) * part, y2 + (y1 - y2) * part, Math.atan2(y2 - y1, x2 - x1)));
    }
    passed += length;
  }
  return chevrons;
}

function chevronMark(x, y, angle) {
  const degrees = ((angle * 180) / Math.PI).toFixed(1);
  return fixedMark('chevron', x, y, drawn('path', { d: 'M-1.4 -2.6L1.4 0L-1.4 2.6', transform: `rotate(${degrees})` }));
}
