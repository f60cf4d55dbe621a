// What of the page's state its address keeps, so that loading it again loses nothing.
export interface Kept {
  element: number | null;
  window: number | null;
  query: string;
  folded: number[]; // negative: unfolded
  act: boolean;
  panel: string;
}

const mostFolded = 200;

export function readAddress(): Kept {
  const said = new URLSearchParams(location.hash.slice(1));
  const number = (name: string) => Number(said.get(name)) || null;
  return {
    element: number('element'),
    window: number('window'),
    query: said.get('search') ?? '',
    folded: (said.get('folded') ?? '').split(',').map(Number).filter(Boolean),
    act: said.get('act') === 'on',
    panel: said.get('panel') ?? 'tree',
  };
}

export function writeAddress(kept: Kept): void {
  const said = new URLSearchParams();
  if (kept.element !== null) said.set('element', String(kept.element));
  if (kept.window !== null) said.set('window', String(kept.window));
  if (kept.query) said.set('search', kept.query);
  if (kept.folded.length) said.set('folded', kept.folded.slice(0, mostFolded).join(','));
  if (kept.act) said.set('act', 'on');
  if (kept.panel !== 'tree') said.set('panel', kept.panel);
  const hash = said.toString();
  history.replaceState(null, '', hash ? `#${hash}` : location.pathname);
}
