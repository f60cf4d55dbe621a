// The ways to find the chosen element again, best first, and one to try.
import { useEffect, useState } from 'preact/hooks';
import {
  languages,
  weaknessOf,
  type Language,
  type WrittenLocator,
} from '../model/locators';
import { CallError, find, locatorsOf as locatorsIn } from '../net/server';
import { store, useStore } from './store';

const pauseBeforeAsking = 150; // milliseconds

// Asks again when the element is another one or the tree has changed, but not for each change.
function useLocators(): { locators: WrittenLocator[]; problem: string } {
  const { node, tree } = useStore();
  const [answer, setAnswer] = useState({ id: -1, locators: [] as WrittenLocator[], problem: '' });
  const id = node?.id ?? -1;
  useEffect(() => {
    let isWanted = true;
    const ask = async () => {
      const { locators, problem } = await locatorsOf(id);
      if (isWanted) setAnswer({ id, locators, problem });
    };
    const timer = setTimeout(ask, answer.id === id ? 3 * pauseBeforeAsking : 0);
    return () => {
      isWanted = false;
      clearTimeout(timer);
    };
  }, [id, tree.version]);
  return answer.id === id ? answer : { locators: [], problem: '' };
}

async function locatorsOf(id: number): Promise<{ locators: WrittenLocator[]; problem: string }> {
  const node = store.tree.get(id);
  if (!node) return { locators: [], problem: '' };
  try {
    const { locators } = await locatorsIn(id, store.program?.name ?? '');
    return { locators, problem: '' };
  } catch (error) {
    return { locators: [], problem: error instanceof CallError ? error.message : String(error) };
  }
}

export function Locators() {
  const { locators, problem } = useLocators();
  const [language, setLanguage] = useState<Language>('tarni');
  const [text, setText] = useState<string | null>(null);
  const { node } = useStore();
  const id = node?.id;
  useEffect(() => setText(null), [id]); // what is tried is meant for the element that was chosen
  return (
    <section aria-labelledby="locators">
      <div class="with-choice">
        <h3 id="locators">How to find it</h3>
        <label>
          Copy as{' '}
          <select
            value={language}
            onChange={(event) => setLanguage(event.currentTarget.value as Language)}
          >
            {languages.map((one) => (
              <option key={one}>{one}</option>
            ))}
          </select>
        </label>
      </div>
      {problem && <p class="note">{problem}</p>}
      <ol class="locators">
        {locators.map((one) => (
          <LocatorRow
            key={one.written}
            locator={one}
            code={one.code[language]}
            onEdit={() => setText(one.written)}
          />
        ))}
      </ol>
      <Trial text={text ?? ''} onText={setText} />
    </section>
  );
}

interface RowProps {
  locator: WrittenLocator;
  code: string;
  onEdit: () => void;
}

function LocatorRow({ locator, code, onEdit }: RowProps) {
  const [isCopied, setIsCopied] = useState(false);
  const weakness = weaknessOf(locator);
  useEffect(() => setIsCopied(false), [code]);
  const copy = async () => {
    await navigator.clipboard.writeText(code);
    setIsCopied(true);
    setTimeout(() => setIsCopied(false), 1500);
  };
  return (
    <li class={locator.matches === 1 ? 'locator' : 'locator locator-weak'}>
      <div class="locator-find">
        {Object.entries(locator.find).map(([name, value]) => (
          <span key={name} class="locator-part">
            <i>{name}</i> {String(value)}
          </span>
        ))}
      </div>
      <div class="locator-said">
        <span
          class={locator.matches === 1 ? 'count count-one' : 'count'}
          title="Elements that it fits now"
        >
          {locator.matches === 1 ? '1 match' : `${locator.matches} matches`}
        </span>
        <span title="Time that the search took in the program">{locator.ms.toFixed(1)} ms</span>
        <span class="grow" />
        <button class="quiet" title="Try it, changed" onClick={onEdit}>
          Edit
        </button>
        <button class="quiet" title={code} onClick={copy}>
          {isCopied ? 'Copied' : 'Copy'}
        </button>
      </div>
      {weakness && locator.matches === 1 && <p class="weakness">{weakness}</p>}
    </li>
  );
}

interface Tried {
  text: string;
  said: string;
  isGood: boolean;
}

// One that a person writes, with what it fits marked in the picture and in the tree.
function Trial({ text, onText }: { text: string; onText: (text: string) => void }) {
  const { tree, isRunning } = useStore();
  const [tried, setTried] = useState<Tried>({ text: '', said: '', isGood: true });
  useEffect(() => {
    if (!text.trim() || !isRunning) {
      store.set({ marked: [] });
      setTried({ text: '', said: '', isGood: true });
      return undefined;
    }
    let isWanted = true;
    const timer = setTimeout(async () => {
      const result = await tryOut(text);
      if (!isWanted) return;
      setTried(result.tried);
      store.set({ marked: result.nodes });
    }, pauseBeforeAsking);
    return () => {
      isWanted = false;
      clearTimeout(timer);
    };
  }, [text, tree.version, isRunning]);
  useEffect(() => () => store.set({ marked: [] }), []);
  return (
    <div class="trial">
      <label for="trial">Try a locator</label>
      <input
        id="trial"
        value={text}
        placeholder="kind=UITableView >> text=Row 3"
        aria-describedby="trial-said"
        spellcheck={false}
        autocomplete="off"
        onInput={(event) => onText(event.currentTarget.value)}
        onKeyDown={(event) => event.key === 'Escape' && onText('')}
      />
      <span id="trial-said" role="status" class={tried.isGood ? 'said' : 'said said-bad'}>
        {tried.said}
      </span>
    </div>
  );
}

async function tryOut(text: string) {
  try {
    const { elements, ms } = await find(text);
    const nodes = elements.map((one) => store.tree.get(one.element)).filter((node) => !!node);
    const count = elements.length;
    const said = `${count === 1 ? '1 match' : `${count} matches`}, ${ms.toFixed(1)} ms there and back`;
    return { nodes, tried: { text, said, isGood: count > 0 } };
  } catch (error) {
    const said = error instanceof Error ? error.message : String(error);
    return { nodes: [], tried: { text, said, isGood: false } };
  }
}
