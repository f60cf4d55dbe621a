// What is out of the ordinary with an element, as small words behind it.
import { nameOf, type Node } from '../model/tree';
import { store } from './store';

interface State {
  word: string;
  why: string;
}

export function statesOf(node: Node): State[] {
  const { visible, enabled, focused, checked, selected, modal, popup } = node.is;
  const states: State[] = [];
  const add = (is: unknown, word: string, why: string) => is && states.push({ word, why });
  const cover = store.tree.coverOf(node);
  const window = store.tree.windows.find((one) => one.element === node.id);
  add(modal, 'modal', 'Keeps the person from all other windows');
  add(popup, 'popup', 'Goes when something else is clicked');
  add(window && !window.takesInput, 'blocked', 'A modal window keeps the person from it');
  // What stands in something hidden need not say it again.
  add(!visible && node.parent?.is.visible !== false, 'hidden', 'Hidden, or clipped away by what it stands in');
  add(cover, 'covered', cover ? `Lies below ${cover.is.class} ${nameOf(cover)}` : '');
  add(enabled === false, 'disabled', 'Takes neither clicks nor keys');
  add(focused, 'focus', 'Has the keyboard');
  add(checked, 'checked', 'Is on');
  add(selected, 'selected', 'Is chosen among its like');
  return states;
}

export function States({ node }: { node: Node }) {
  return (
    <>
      {statesOf(node).map(({ word, why }) => (
        <span key={word} class={`state state-${word}`} title={why}>
          {word}
        </span>
      ))}
    </>
  );
}
