import { render } from 'preact';
import { App } from './view/App';
import { store } from './view/store';

render(<App />, document.getElementById('root')!);
store.start();
